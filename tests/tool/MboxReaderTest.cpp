#include "tool/sources/MboxReader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <vector>

namespace bouncecheck {
namespace {

/// A text as a stream, `step` bytes at a time; damaged at its end, if wanted.
class TextStream final : public InputStream {
public:
    TextStream(std::string text, std::size_t step, bool isDamaged = false)
        : text_(std::move(text)), step_(step), isDamaged_(isDamaged) {}
    std::size_t read(std::span<char> room) override {
        if (isDamaged_ && at_ == text_.size()) throw ReadError("damaged");
        const std::size_t count = std::min({room.size(), step_, text_.size() - at_});
        std::copy_n(text_.data() + at_, count, room.data());
        at_ += count;
        return count;
    }

private:
    std::string text_;
    std::size_t step_;
    std::size_t at_ = 0;
    bool isDamaged_;
};

constexpr std::size_t megabyte = 1 << 20;

std::vector<std::string> messagesOf(const std::string& text, std::size_t step = megabyte,
                                    std::size_t limit = megabyte,
                                    FileKind kind = FileKind::byContent) {
    TextStream stream(text, step);
    MboxReader reader(stream, limit, kind);
    std::vector<std::string> all;
    while (const auto message = reader.next()) {
        EXPECT_EQ(message->index, all.size() + 1);
        all.push_back(message->tooLarge ? "(too large)" : message->bytes);
    }
    return all;
}

const std::string from = "From a@x.example Thu Sep 18 17:54:04 2008\n";

using Messages = std::vector<std::string>;

TEST(MboxReader, DividesMailboxes) {
    const std::pair<std::string, Messages> cases[] = {
        {"", {}},
        {from, {""}},
        {from.substr(0, from.size() - 1), {""}},
        {from + from, {from}},
        {from + "S: 1\n\none\n\n" + from + "S: 2\n\ntwo\n\n", {"S: 1\n\none\n", "S: 2\n\ntwo\n"}},
        // truncated
        {from + "S: 1\n\none\n\n" + from + "S: 2\n\ntw", {"S: 1\n\none\n", "S: 2\n\ntw"}},
        {from + "S: 1\n\none\n\nFrom a@x.exam", {"S: 1\n\none\n\nFrom a@x.exam"}},
        // of which each is a sentence, or stands behind no blank line
        {from + "S: 1\n\none\n\nFrom me to you\n" + from + "two\n",
         {"S: 1\n\none\n\nFrom me to you\n" + from + "two\n"}},
        // several blank lines are the message's, but for one
        {from + "S: 1\n\none\n\n\n\n" + from + "S: 2\n", {"S: 1\n\none\n\n\n", "S: 2\n"}},
        {from + "S: 1\n\n" + from + "S: 2\n\n", {"S: 1\n", "S: 2\n"}},
        // CRLF
        {"From a Thu Sep 18 17:54:04 2008\r\nS: 1\r\n\r\none\r\n\r\nFrom b Thu Sep 18 17:54:04 "
         "2008\r\nS: 2\r\n",
         {"S: 1\r\n\r\none\r\n", "S: 2\r\n"}},
        // no mailbox
        {"S: 1\n\none\n\n" + from + "S: 2\n", {"S: 1\n\none\n\n" + from + "S: 2\n"}},
        {"From me to you\n\n" + from, {"From me to you\n\n" + from}},
    };
    for (const auto& [text, expected] : cases) {
        for (const std::size_t step : {std::size_t{1}, std::size_t{7}, megabyte}) {
            EXPECT_EQ(messagesOf(text, step), expected) << text << "in steps of " << step;
        }
    }
}

std::string withCr(std::string text) {
    std::ranges::replace(text, '\n', '\r');
    return text;
}

TEST(MboxReader, DividesMailboxesOfBareCr) {
    const std::string body = "x\n\n" + from;
    const std::string text = from + "S: 1\n\none\n>From b\n\n" + from +
                             "S: 2\nContent-Length: " + std::to_string(body.size()) + "\n\n" +
                             body + "\n" + from + "S: 3\n\n\nthree\n";
    for (const std::size_t step : {std::size_t{1}, megabyte}) {
        Messages expected = messagesOf(text, step);
        ASSERT_EQ(expected.size(), 3U);
        for (std::string& message : expected) message = withCr(message);
        EXPECT_EQ(messagesOf(withCr(text), step), expected);
    }
    const std::string mixed = from + "a\r\r" + withCr(from) + "b\n";
    EXPECT_EQ(messagesOf(mixed), Messages{mixed.substr(from.size())});
}

TEST(MboxReader, GoesByTheKindOfTheFile) {
    using enum FileKind;
    const std::string quoting = "S: 1\n\n>From b\n\n" + from + "S: 2\n";
    const Messages divided = {"S: 1\n\nFrom b\n", "S: 2\n"};
    const std::tuple<FileKind, std::string, Messages> cases[] = {
        {message, from + quoting, {quoting}},
        {message, quoting, {quoting}},
        {message, withCr(from) + "S: 1\r", {"S: 1\r"}},
        {message, "From me: x\n", {"From me: x\n"}},
        {message, from, {""}},
        {message, "", {""}},
        {mailbox, from + quoting, divided},
        {mailbox, quoting, divided},
        {mailbox, "\r\n\n" + from + quoting, divided},
        {mailbox, "\n\n", {}},
        {mailbox, "", {}},
    };
    for (const auto& [kind, text, expected] : cases) {
        EXPECT_EQ(messagesOf(text, 1, megabyte, kind), expected) << text;
    }
}

TEST(MboxReader, HandsOutWhatStandsBeforeDamage) {
    const std::pair<std::string, std::size_t> cases[] = {
        {"", 0}, {"S: 1\n\ncut", 1}, {from + "S: 1\n\n" + from + "S: 2\n\ncut", 2}};
    for (const auto& [text, count] : cases) {
        TextStream stream(text, 9, true);
        MboxReader reader(stream, megabyte);
        std::string last;
        for (std::size_t i = 0; i < count; ++i) last = reader.next().value().bytes;
        EXPECT_TRUE(text.ends_with(last)) << last;
        EXPECT_THROW(reader.next(), ReadError);
        EXPECT_FALSE(reader.next());
    }
}

TEST(MboxReader, UndoesQuoting) {
    const std::string text =
        from + ">From a\nS: 1\n\n>From b\n>>From c\n >From d\nx>From e\n> From\n";
    EXPECT_EQ(messagesOf(text),
              Messages{"From a\nS: 1\n\nFrom b\n>From c\n >From d\nx>From e\n> From\n"});
}

TEST(MboxReader, BelievesALengthThatLeadsToAnEnd) {
    const std::string body = "x\n\n" + from + ">From b\n";
    const auto message = [&](std::size_t length) {
        return "S: 1\nContent-Length: " + std::to_string(length) + "\n\n" + body;
    };
    const std::string rest = "\n" + from + "S: 2\n";
    EXPECT_EQ(messagesOf(from + message(body.size()) + rest),
              (Messages{message(body.size()), "S: 2\n"}));
    EXPECT_EQ(messagesOf(from + message(body.size()), 5), Messages{message(body.size())});
    for (const std::size_t length : {std::size_t{0}, body.size() - 2, body.size() + 9, megabyte}) {
        EXPECT_EQ(messagesOf(from + message(length) + rest).size(), 3U) << length;
    }
    const std::string number = std::to_string(body.size());
    const std::pair<std::string, std::size_t> headers[] = {
        {"Content-Length: " + number + "\nS: 1\n\n", 2},
        {"S: 1\nCONTENT-LENGTH : " + number + " \n\n", 2},
        {"S: 1\nContent-Length:\n\t" + number + "\n\n", 2},
        {"S: 1\r\nContent-Length: " + number + "\r\n\r\n", 2},
        {"Content-Length: " + number + "\nContent-Length: " + number + "\n\n", 2},
        {"Content-Length: " + number + "\nContent-Length: 1\n\n", 3},
        {"Content-Length: 1\nContent-Length: " + number + "\n\n", 3},
        {"S: 1\n Content-Length: " + number + "\n\n", 3},
        {"X-Content-Length: " + number + "\n\n", 3},
        {"\nContent-Length: " + number + "\n\n", 3},
    };
    for (const auto& [header, count] : headers) {
        EXPECT_EQ(messagesOf(from + header + body + rest).size(), count) << header;
    }
    // A length does not keep a quoting mailbox from being unquoted.
    EXPECT_EQ(messagesOf(from + "Content-Length: 8\n\n>From b\n\n" + from),
              (Messages{"Content-Length: 8\n\nFrom b\n", ""}));
    EXPECT_EQ(messagesOf(from + "Content-Length: 99999999999999999999999\n\nx\n\n" + from).size(),
              2U);
}

TEST(MboxReader, PassesOverMessagesThatAreTooLarge) {
    const std::string large = "S: 1\n\n" + std::string(500'000, 'x') + "\n\nFrom here\n\n";
    const std::string text = from + "S: 0\n\n" + from + large + from + "S: 2\n";
    for (const std::size_t step : {std::size_t{1000}, megabyte}) {
        EXPECT_EQ(messagesOf(text, step, 20), (Messages{"S: 0\n", "(too large)", "S: 2\n"}));
    }
    EXPECT_EQ(messagesOf(large, megabyte, 20), Messages{"(too large)"});
    EXPECT_EQ(messagesOf(large, megabyte, large.size()), Messages{large});
    EXPECT_EQ(messagesOf(large, megabyte, large.size() - 1), Messages{"(too large)"});
}

TEST(MboxReader, FindsEnvelopesAcrossPieces) {
    // The mark falls on each place around the end of a piece.
    for (std::size_t size = 65'400; size < 65'560; ++size) {
        const std::string text = from + std::string(size, 'x') + "\n\n" + from + "S: 2\n";
        ASSERT_EQ(messagesOf(text).size(), 2U) << size;
        ASSERT_EQ(messagesOf(text, megabyte, 100), (Messages{"(too large)", "S: 2\n"})) << size;
    }
}

}  // namespace
}  // namespace bouncecheck
