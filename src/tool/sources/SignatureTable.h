#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "tool/sources/FileContent.h"

namespace bouncecheck {

/// Bytes by which a kind of file is known: those in front, and more at a place behind
/// them, if they alone do not decide.
struct Signature {
    std::string_view front;
    FileContent content;
    std::size_t at = 0;
    std::string_view bytes = {};
};

namespace signature {

using namespace std::string_view_literals;
using Kind = FileContent::Kind;

/// Where a zip archive has the name of its first member.
inline constexpr std::size_t zipName = 30;

/// In the order in which they are tried.
inline constexpr std::array table = std::to_array<Signature>({
    {"\x1F\x8B"sv, {Kind::gzip, "a gzip file"}},
    {"\xFD\x37zXZ\0"sv, {Kind::compressed, "an xz file"}},
    {"\x28\xB5\x2F\xFD"sv, {Kind::compressed, "a zstd file"}},
    {"BZh"sv, {Kind::compressed, "a bzip2 file"}, 4, "1AY&SY"sv},
    {"BZh"sv, {Kind::compressed, "an empty bzip2 file"}, 4, "\x17rE8P\x90"sv},

    // Zip archives, and documents that are such.
    {"PK\3\4"sv, {Kind::foreign, "an Office document"}, zipName, "[Content_Types].xml"sv},
    {"PK\3\4"sv, {Kind::foreign, "an Office document"}, zipName, "_rels/.rels"sv},
    {"PK\3\4"sv, {Kind::foreign, "an open document or book"}, zipName, "mimetypeapplication/"sv},
    {"PK\3\4"sv, {Kind::foreign, "a Java archive"}, zipName, "META-INF/"sv},
    {"PK\3\4"sv, {Kind::zip, "a zip archive"}},
    {"PK\5\6"sv, {Kind::zip, "an empty zip archive"}},

    {"LZIP"sv, {Kind::foreign, "an lzip file"}},
    {"\x04\x22\x4D\x18"sv, {Kind::foreign, "an LZ4 file"}},
    {"\x5D\0\0"sv, {Kind::foreign, "an LZMA file"}},
    {"\x1F\x9D"sv, {Kind::foreign, "a file of compress"}},
    {"MSCF"sv, {Kind::foreign, "a cabinet file"}},
    {"070701"sv, {Kind::foreign, "a cpio archive"}},
    {"070702"sv, {Kind::foreign, "a cpio archive"}},
    {"070707"sv, {Kind::foreign, "a cpio archive"}},
    {"7z\xBC\xAF\x27\x1C"sv, {Kind::foreign, "a 7-Zip archive"}},
    {"Rar!\x1A\7"sv, {Kind::foreign, "a RAR archive"}},
    {"%PDF-"sv, {Kind::foreign, "a PDF document"}},
    {"\x89PNG\r\n\x1A\n"sv, {Kind::foreign, "a PNG image"}},
    {"\xFF\xD8\xFF"sv, {Kind::foreign, "a JPEG image"}},
    {"GIF87a"sv, {Kind::foreign, "a GIF image"}},
    {"GIF89a"sv, {Kind::foreign, "a GIF image"}},
    {"\177ELF"sv, {Kind::foreign, "a program (ELF)"}},
    {"SQLite format 3\0"sv, {Kind::foreign, "an SQLite database"}},
    {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"sv, {Kind::foreign, "an Outlook or Office file (OLE)"}},
    {"!BDN"sv, {Kind::foreign, "an Outlook data file"}},
    {"\x78\x9F\x3E\x22"sv, {Kind::foreign, "an Outlook attachment (TNEF)"}},
    {"\xCF\xAD\x12\xFE"sv, {Kind::foreign, "an Outlook Express folder"}},
    {"*mbx*\r\n"sv, {Kind::foreign, "a mailbox in MBX format"}},
    {"\xFF\xFE\0\0"sv, {Kind::foreign, "UTF-32 text"}},
    {"\0\0\xFE\xFF"sv, {Kind::foreign, "UTF-32 text"}},
    {"\xFF\xFE"sv, {Kind::foreign, "UTF-16 text"}},
    {"\xFE\xFF"sv, {Kind::foreign, "UTF-16 text"}},
});

}  // namespace signature
}  // namespace bouncecheck
