#include <dlfcn.h>

#include <string>

#include "tool/sources/Libarchive.h"

namespace bouncecheck {

Libarchive::Libarchive() {
    constexpr const char* name = "libarchive.so.13";
    void* library = ::dlopen(name, RTLD_NOW | RTLD_LOCAL);
    if (!library) {
        throw ReadError("is compressed or an archive, which takes libarchive (libarchive.so.13)");
    }
    const auto find = [&]<class Function>(Function& function, const char* symbol) {
        function = reinterpret_cast<Function>(::dlsym(library, symbol));
        if (!function) throw ReadError(std::string("libarchive lacks ") + symbol);
    };
    find(readNew, "archive_read_new");
    find(supportBzip2, "archive_read_support_filter_bzip2");
    find(supportXz, "archive_read_support_filter_xz");
    find(supportZstd, "archive_read_support_filter_zstd");
    find(supportRaw, "archive_read_support_format_raw");
    find(supportEmpty, "archive_read_support_format_empty");
    find(supportTar, "archive_read_support_format_tar");
    find(supportZip, "archive_read_support_format_zip_streamable");
    find(open, "archive_read_open");
    find(nextHeader, "archive_read_next_header");
    find(readDataBlock, "archive_read_data_block");
    find(readFree, "archive_read_free");
    find(filterCode, "archive_filter_code");
    find(errorString, "archive_error_string");
    find(entryPathnameUtf8, "archive_entry_pathname_utf8");
    find(entryPathname, "archive_entry_pathname");
    find(entryFiletype, "archive_entry_filetype");
    find(entryHardlink, "archive_entry_hardlink");
    find(entryIsEncrypted, "archive_entry_is_encrypted");
}

}  // namespace bouncecheck
