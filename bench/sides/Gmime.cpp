// GMime's side: parsing from memory, without a copy, and a walk over the parts.
// It parses enclosed messages too and cannot be told not to; they are counted as
// leaves, which they are to us.

#include <gmime/gmime.h>

#include <memory>

#include "bench/sides/Sides.h"

namespace bouncecheck::bench {
namespace {

struct Unref {
    void operator()(gpointer object) const noexcept { g_object_unref(object); }
};
template <class Object>
using Owned = std::unique_ptr<Object, Unref>;

std::size_t countEntities(GMimeObject* entity) {
    std::size_t count = 1;
    if (!GMIME_IS_MULTIPART(entity)) return count;
    GMimeMultipart* const multipart = GMIME_MULTIPART(entity);
    const int parts = g_mime_multipart_get_count(multipart);
    for (int i = 0; i < parts; ++i) {
        count += countEntities(g_mime_multipart_get_part(multipart, i));
    }
    return count;
}

std::size_t countParts(const std::string& bytes) {
    // The stream reads the array and neither changes nor frees it.
    GByteArray array{reinterpret_cast<guint8*>(const_cast<char*>(bytes.data())),
                     static_cast<guint>(bytes.size())};
    const Owned<GMimeStream> stream(g_mime_stream_mem_new_with_byte_array(&array));
    g_mime_stream_mem_set_owner(GMIME_STREAM_MEM(stream.get()), FALSE);
    const Owned<GMimeParser> parser(g_mime_parser_new_with_stream(stream.get()));
    const Owned<GMimeMessage> message(g_mime_parser_construct_message(parser.get(), nullptr));
    GMimeObject* const root = message ? g_mime_message_get_mime_part(message.get()) : nullptr;
    return root ? countEntities(root) : 1;
}

void timeAll(const std::vector<StoredMessage>& messages) {
    printTime("gmime-parse", [&] {
        for (const StoredMessage& message : messages) countParts(message.bytes);
    });
}

}  // namespace
}  // namespace bouncecheck::bench

int main(int argc, char** argv) {
    g_mime_init();
    return bouncecheck::bench::runSide(argc, argv, bouncecheck::bench::countParts,
                                       bouncecheck::bench::timeAll);
}
