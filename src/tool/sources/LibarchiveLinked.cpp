#include "tool/sources/Libarchive.h"

namespace bouncecheck {

// In a static program, which cannot load anything.
Libarchive Libarchive::load() {
    return {
        .readNew = &::archive_read_new,
        .supportBzip2 = &::archive_read_support_filter_bzip2,
        .supportXz = &::archive_read_support_filter_xz,
        .supportZstd = &::archive_read_support_filter_zstd,
        .supportRaw = &::archive_read_support_format_raw,
        .supportEmpty = &::archive_read_support_format_empty,
        .supportTar = &::archive_read_support_format_tar,
        .supportZip = &::archive_read_support_format_zip_streamable,
        .open = &::archive_read_open,
        .nextHeader = &::archive_read_next_header,
        .readDataBlock = &::archive_read_data_block,
        .readFree = &::archive_read_free,
        .filterCode = &::archive_filter_code,
        .errorString = &::archive_error_string,
        .entryPathnameUtf8 = &::archive_entry_pathname_utf8,
        .entryPathname = &::archive_entry_pathname,
        .entryFiletype = &::archive_entry_filetype,
        .entryHardlink = &::archive_entry_hardlink,
        .entryIsEncrypted = &::archive_entry_is_encrypted,
    };
}

}  // namespace bouncecheck
