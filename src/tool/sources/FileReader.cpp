#include "tool/sources/FileReader.h"

#include "tool/sources/Archive.h"
#include "tool/sources/MboxReader.h"
#include "tool/sources/Unpacked.h"

namespace bouncecheck {

void FileReader::read(const FileToRead& file, std::unique_ptr<InputStream> packed, unsigned layers,
                      UnpackedSize& size) {
    const auto stream = unpacked(std::move(packed), layers, size);
    const FileContent& content = stream->content();
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
        MessagePlace place = {file.name, message->index, reader.isMailbox()};
        if (message->tooLarge) {
            onProblem_(place.text(), "the message is larger than --max-message-size allows");
            continue;
        }
        onMessage_({.place = std::move(place),
                    .bytes = std::move(message->bytes),
                    .progress = file.stretch.begin + file.stretch.size * stream.fractionRead()});
    }
}

}  // namespace bouncecheck
