#include "tool/sources/FileReader.h"

#include <string_view>

#include "tool/sources/Archive.h"
#include "tool/sources/MboxReader.h"
#include "tool/sources/Place.h"
#include "tool/sources/Unpacked.h"

namespace bouncecheck {
namespace {

/// What a member of an archive is known to hold: as a file of that name, and one message
/// in the folders of a Maildir.
FileKind kindOfMember(std::string_view name) noexcept {
    const std::string_view folder = name.substr(0, name.find_last_of('/') + 1);
    const auto isIn = [&](std::string_view part) {
        return folder.ends_with(part) &&
               (folder == part || folder.ends_with("/" + std::string(part)));
    };
    return isIn("cur/") || isIn("new/") ? FileKind::message : kindOfName(name);
}

}  // namespace

void FileReader::read(const FileToRead& file, std::unique_ptr<InputStream> packed, unsigned layers,
                      UnpackedSize& size) {
    const auto stream = unpacked(std::move(packed), layers, size);
    const FileContent content = contentOf(stream->firstBytes());
    switch (content.kind) {
        case FileContent::Kind::foreign:
            throw ReadError("is " + std::string(content.name) + ", not mail");
        case FileContent::Kind::tar:
        case FileContent::Kind::zip:
            addLayer(layers);
            readMembers(file, *stream, content.kind, layers, size);
            break;
        default: readMessages(file, *stream); break;
    }
}

void FileReader::readMembers(const FileToRead& file, InputStream& packed, FileContent::Kind format,
                             unsigned layers, UnpackedSize& size) {
    Archive archive(packed, format, size);
    while (archive.next()) {
        const FileKind kind = options_.single ? FileKind::message : kindOfMember(archive.name());
        const FileToRead member = {file.name + '/' + archive.name(), kind, file.stretch};
        reportingProblems(onProblem_, member.name,
                          [&] { read(member, archive.content(), layers, size); });
    }
}

void FileReader::readMessages(const FileToRead& file, InputStream& stream) {
    MboxReader reader(stream, options_.maxMessageSize, file.kind);
    while (auto message = reader.next()) {
        if (message->tooLarge) {
            onProblem_(placeOf(file.name, message->index, reader.isMailbox()),
                       "the message is larger than --max-message-size allows");
            continue;
        }
        onMessage_({.source = file.name,
                    .index = message->index,
                    .inMailbox = reader.isMailbox(),
                    .bytes = std::move(message->bytes),
                    .progress = file.stretch.begin + file.stretch.size * stream.fractionRead()});
    }
}

}  // namespace bouncecheck
