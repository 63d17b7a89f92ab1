#include "tool/sources/Sources.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>

#include "tool/ToolRun.h"

namespace bouncecheck {
namespace {

class SourcesTest : public Tool {
protected:
    /// The messages as `place=first line`, then the problems as `!place`.
    std::vector<std::string> read(SourceOptions options) {
        std::vector<std::string> seen;
        std::vector<std::string> problems;
        readSources(
            options,
            [&](const SourceMessage& m) {
                seen.push_back(placeOf(nameIn(m.source), m.index, m.inMailbox) + '=' +
                               m.bytes.substr(0, m.bytes.find('\n')));
            },
            [&](const std::string& source, const std::string& reason) {
                EXPECT_NE(reason, "");
                problems.push_back('!' + nameIn(source));
            });
        seen.insert(seen.end(), problems.begin(), problems.end());
        return seen;
    }
    std::vector<std::string> read(const std::string& name = "") {
        return read(SourceOptions{.paths = {path(name)}});
    }
    std::string gzipOf(const std::string& text) {
        const std::string plain = write("plain", text);
        EXPECT_EQ(std::system(("gzip -n " + plain).c_str()), 0);
        const std::string packed = contentOf(plain + ".gz");
        fs::remove(plain + ".gz");
        return packed;
    }
    std::string nameIn(const std::string& source) const {
        return source.starts_with(path()) ? source.substr(path().size()) : source;
    }
};

using Seen = std::vector<std::string>;
const std::string mailbox =
    "From a Thu Sep 18 17:54:04 2008\nS: 1\n\none\n\nFrom a Thu Sep 18 17:54:04 2008\nS: "
    "2\n\ntwo\n";

TEST_F(SourcesTest, ReadsTreesInTheOrderOfNames) {
    write("b/2", "S: b2");
    write("b/10", mailbox);
    write("a", "S: a");
    write("c/tmp/x", "S: c");
    write("empty", "");
    EXPECT_EQ(read(), (Seen{"a=S: a", "b/10:1=S: 1", "b/10:2=S: 2", "b/2=S: b2", "c/tmp/x=S: c"}));
}

TEST_F(SourcesTest, ReadsMaildirs) {
    write("m/cur/1:2,S", "S: cur");
    write("m/new/2", mailbox);
    write("m/new/3", "");
    write("m/tmp/4", "S: tmp");
    write("m/notes-of-a-server", "S: no");
    write("m/.Sub/cur/5", "S: sub");
    fs::create_directories(folder_ / "m/.Sub/new");
    write("m/.Sub/tmp/6", "S: tmp");
    EXPECT_EQ(read(), (Seen{"m/.Sub/cur/5=S: sub", "m/cur/1:2,S=S: cur",
                            "m/new/2=From a Thu Sep 18 17:54:04 2008", "m/new/3="}));
}

TEST_F(SourcesTest, TellsWhatItCannotRead) {
    write("a", "S: a");
    ASSERT_EQ(::mkfifo(path("fifo").c_str(), 0600), 0);
    const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    path("socket").copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    ::close(socket);
    fs::create_symlink("nowhere", folder_ / "vanished");
    fs::create_symlink(".", folder_ / "round");
    write("z", "S: z");
    EXPECT_EQ(read(), (Seen{"a=S: a", "z=S: z", "!fifo", "!socket", "!vanished"}));
    EXPECT_EQ(read(SourceOptions{.paths = {"/dev/zero", path("fifo"), path("none")}}),
              (Seen{"!/dev/zero", "!fifo", "!none"}));
}

TEST_F(SourcesTest, TellsMessagesThatAreTooLarge) {
    write("1", "S: " + std::string(100, 'x'));
    write("2", "From a Thu Sep 18 17:54:04 2008\n" + std::string(100, 'x') + "\n\n" + mailbox);
    write("3", "S: 3");
    EXPECT_EQ(read(SourceOptions{.paths = {path()}, .maxMessageSize = 50}),
              (Seen{"2:2=S: 1", "2:3=S: 2", "3=S: 3", "!1", "!2:1"}));
}

TEST_F(SourcesTest, ReadsListsOfPaths) {
    write("a b", "S: a");
    write("c\nd", "S: c");
    const std::string lines =
        write("lines", path("a b") + "\n\n" + path("none") + "\n" + path("a b"));
    const std::string nuls = write("nuls", path("c\nd") + '\0' + path("a b") + '\0');
    EXPECT_EQ(read(SourceOptions{.listFile = lines}), (Seen{"a b=S: a", "a b=S: a", "!none"}));
    EXPECT_EQ(read(SourceOptions{.listFile = nuls, .nulSeparated = true}),
              (Seen{"c\nd=S: c", "a b=S: a"}));
    EXPECT_EQ(read(SourceOptions{.listFile = path("none")}), Seen{"!none"});
}

TEST_F(SourcesTest, UnpacksFiles) {
    const std::string xzOfA(
        "\xFD\x37\x7A\x58\x5A\x00\x00\x04\xE6\xD6\xB4\x46\x02\x00\x21\x01\x16\x00\x00\x00\x74\x2F"
        "\xE5\xA3\x01\x00\x03",
        27);
    write("1.gz", gzipOf(mailbox));
    write("2", gzipOf("S: a"));
    write("3.gz", gzipOf(mailbox).substr(0, 60));
    write("4.xz", xzOfA);
    write("5", "\x1F\x8B nonsense");
    write("6.zst", std::string("\x28\xB5\x2F\xFD\x20\x04\x21\x00\x00S: z", 13));
    write("7.gz", gzipOf(""));
    write("m/cur/x", gzipOf("S: m"));
    fs::create_directories(folder_ / "m/new");
    const Seen seen = read();
    EXPECT_EQ(Seen(seen.begin(), seen.begin() + 5),
              (Seen{"1.gz:1=S: 1", "1.gz:2=S: 2", "2=S: a", "6.zst=S: z", "m/cur/x=S: m"}));
    EXPECT_EQ(Seen(seen.begin() + 5, seen.end()), (Seen{"!3.gz", "!4.xz", "!5"}));
}

}  // namespace
}  // namespace bouncecheck
