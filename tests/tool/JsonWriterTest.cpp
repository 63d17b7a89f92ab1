#include "tool/JsonWriter.h"

#include "tool/ToolRun.h"

namespace bouncecheck {
namespace {

TEST(JsonWriter, SeparatesWhatItWrites) {
    JsonWriter json;
    json.beginObject();
    json.member("a", "x");
    json.name("b");
    json.beginArray();
    json.beginObject();
    json.endObject();
    json.number(7);
    json.null();
    json.endArray();
    json.member("c", "");
    json.endObject();
    EXPECT_EQ(json.text(), R"({"a":"x","b":[{},7,null],"c":""})");
    json.clear();
    json.string("again");
    EXPECT_EQ(json.text(), "\"again\"");
}

TEST(JsonWriter, WritesAnyBytesAsAnotherParserReadsThem) {
    for (int byte = 0; byte < 256; ++byte) {
        const std::string value = {'a', static_cast<char>(byte), 'z'};
        JsonWriter json;
        json.string(value);
        const bool isText = byte < 128;
        EXPECT_EQ(Json::parse(json.text()), isText ? value : "a\xEF\xBF\xBDz") << byte;
    }
}

TEST_F(Tool, NamesEachMemberOnce) {
    const std::string file = write("x", failedReport);
    const std::string line =
        run({"--format", "json", "--data", "--fields", "name,data,name", file}).out;
    EXPECT_EQ(line, "{\"name\":\"hard\",\"data\":" +
                        Json("Final-Recipient: rfc822;a@x.example\r\nAction: failed").dump() +
                        "}\n");
}

}  // namespace
}  // namespace bouncecheck
