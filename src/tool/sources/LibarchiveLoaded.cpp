#include <dlfcn.h>

#include <string>

#include "tool/sources/Libarchive.h"

namespace bouncecheck {

Libarchive Libarchive::load() {
    constexpr const char* name = "libarchive.so.13";
    void* const object = ::dlopen(name, RTLD_NOW | RTLD_LOCAL);
    if (!object) {
        throw ReadError("is compressed or an archive, which takes libarchive (libarchive.so.13)");
    }
    const auto find = [&]<class Function>(Function& function, const char* symbol) {
        function = reinterpret_cast<Function>(::dlsym(object, symbol));
        if (!function) throw ReadError(std::string("libarchive lacks ") + symbol);
    };
    Libarchive library{};
    find(library.readNew, "archive_read_new");
    find(library.supportBzip2, "archive_read_support_filter_bzip2");
    find(library.supportXz, "archive_read_support_filter_xz");
    find(library.supportZstd, "archive_read_support_filter_zstd");
    find(library.supportRaw, "archive_read_support_format_raw");
    find(library.supportEmpty, "archive_read_support_format_empty");
    find(library.supportTar, "archive_read_support_format_tar");
    find(library.supportZip, "archive_read_support_format_zip_streamable");
    find(library.open, "archive_read_open");
    find(library.nextHeader, "archive_read_next_header");
    find(library.readDataBlock, "archive_read_data_block");
    find(library.readFree, "archive_read_free");
    find(library.filterCode, "archive_filter_code");
    find(library.errorString, "archive_error_string");
    find(library.entryPathnameUtf8, "archive_entry_pathname_utf8");
    find(library.entryPathname, "archive_entry_pathname");
    find(library.entryFiletype, "archive_entry_filetype");
    find(library.entryHardlink, "archive_entry_hardlink");
    find(library.entryIsEncrypted, "archive_entry_is_encrypted");
    return library;
}

}  // namespace bouncecheck
