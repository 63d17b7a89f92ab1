# Puts a page, its style and its scripts together as C++ source:
#
#   cmake -D SOURCE=folder -D PAGE=name -D HEADING=text -D SCRIPTS=a.js;b.js -D OUTPUT=file.cpp \
#       -P EmbedPage.cmake
#
# What differs between pages comes from the folder of its name. The scripts become one, in their
# order. The page's Content-Security-Policy names it and the style by their hashes.

# The Base64 form of hexadecimal digits.
function(to_base64 hex result)
  set(alphabet ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/)
  string(LENGTH "${hex}" digits)
  set(text "")
  # Three digits are two characters; zeros fill the last up.
  foreach(at RANGE 0 ${digits} 3)
    string(SUBSTRING "${hex}000" ${at} 3 group)
    math(EXPR first "0x${group} >> 6")
    math(EXPR second "0x${group} & 63")
    string(SUBSTRING ${alphabet} ${first} 1 first)
    string(SUBSTRING ${alphabet} ${second} 1 second)
    string(APPEND text ${first}${second})
  endforeach()
  math(EXPR size "(4 * ${digits} + 5) / 6")
  string(SUBSTRING "${text}" 0 ${size} text)
  set(${result} "${text}=" PARENT_SCOPE)  # of 32 bytes
endfunction()

function(hash_of text result)
  string(SHA256 hex "${text}")
  to_base64(${hex} base64)
  set(${result} "'sha256-${base64}'" PARENT_SCOPE)
endfunction()

file(READ ${SOURCE}/page.html page)
file(READ ${SOURCE}/page.css style)
string(REPLACE "{{page}}" "${PAGE}" page "${page}")
string(REPLACE "{{heading}}" "${HEADING}" page "${page}")
foreach(part IN ITEMS charts search)
  file(READ ${SOURCE}/${PAGE}/${part}.html text)
  string(STRIP "${text}" text)
  string(REPLACE "{{${part}}}" "${text}" page "${page}")
endforeach()
set(script "")
foreach(name IN LISTS SCRIPTS)
  file(READ ${SOURCE}/${name} text)
  string(APPEND script "\n${text}")
endforeach()
foreach(text IN ITEMS "${style}" "${script}")
  if("${text}" MATCHES "</|<!--|\\)page\"")
    message(FATAL_ERROR "style and scripts must not hold ${CMAKE_MATCH_0}")
  endif()
endforeach()
hash_of("${style}" style_hash)
hash_of("${script}" script_hash)

string(REPLACE "{{style-hash}}" "${style_hash}" page "${page}")
string(REPLACE "{{script-hash}}" "${script_hash}" page "${page}")
string(REPLACE "{{style}}" "${style}" page "${page}")
string(REPLACE "{{script}}" "${script}" page "${page}")
string(FIND "${page}" "{{data}}" data)
string(SUBSTRING "${page}" 0 ${data} before)
math(EXPR data "${data} + 9")  # with its line end
string(SUBSTRING "${page}" ${data} -1 behind)

file(WRITE ${OUTPUT} "#include \"tool/output/PageText.h\"

namespace bouncecheck {

const PageText ${PAGE}Page = {R\"page(${before})page\", R\"page(${behind})page\"};

}  // namespace bouncecheck
")
