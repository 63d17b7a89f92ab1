#include "tool/sources/Sources.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <random>

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
                seen.push_back(nameIn(m.place.text()) + '=' +
                               m.bytes.substr(0, m.bytes.find('\n')));
            },
            [&](std::string_view source, std::string_view reason) {
                EXPECT_NE(reason, "");
                problems.push_back('!' + nameIn(std::string(source)));
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
    EXPECT_EQ(read(),
              (Seen{"m/.Sub/cur/5=S: sub", "m/cur/1:2,S=S: cur", "m/new/2=S: 1", "m/new/3="}));
    EXPECT_EQ(read("m/new"), (Seen{"m/new/2=S: 1", "m/new/3="}));
    EXPECT_EQ(read("m/cur/../new/2"), Seen{"m/cur/../new/2=S: 1"});
}

TEST_F(SourcesTest, ReadsMessagesOfMaildirsThatAreRenamedMeanwhile) {
    for (const std::string name :
         {"cur/1:2,", "cur/2:2,", "cur/6:2,", "cur/6:2,S", "new/3", "new/4", "new/5"}) {
        write("m/" + name, "S: " + name);
    }
    const auto rename = [&](const std::string& from, const std::string& to) {
        fs::rename(folder_ / "m" / from, folder_ / "m" / to);
    };
    Seen seen;
    readSources(
        {.paths = {path("m")}},
        [&](const SourceMessage& m) {
            if (seen.empty()) {
                rename("cur/2:2,", "cur/2:2,S");
                rename("new/3", "cur/3:2,");
                rename("new/4", "cur/4");
                fs::remove(folder_ / "m/new/5");
                fs::remove(folder_ / "m/cur/6:2,");
            }
            seen.push_back(nameIn(m.place.source) + '=' + m.bytes);
        },
        [&](std::string_view source, std::string_view) {
            seen.push_back('!' + nameIn(std::string(source)));
        });
    EXPECT_EQ(seen,
              (Seen{"m/cur/1:2,=S: cur/1:2,", "m/cur/6:2,S=S: cur/6:2,S", "m/cur/2:2,S=S: cur/2:2,",
                    "m/cur/3:2,=S: new/3", "m/cur/4=S: new/4", "!m/new/5"}));
}

TEST_F(SourcesTest, GoesByTheNamesOfFiles) {
    for (const char* name : {"1.eml", "2.EML", "3.eml.gz", "4.txt", "5.mbox", "mbox-6"}) {
        write(name, mailbox);
    }
    write("7.MBox.xz", "S: 1\n\n" + mailbox);
    write("8.mboxes", "S: 1\n\n" + mailbox);
    EXPECT_EQ(read(),
              (Seen{"1.eml=S: 1", "2.EML=S: 1", "3.eml.gz=S: 1", "4.txt:1=S: 1", "4.txt:2=S: 2",
                    "5.mbox:1=S: 1", "5.mbox:2=S: 2", "7.MBox.xz:1=S: 1", "7.MBox.xz:2=S: 1",
                    "7.MBox.xz:3=S: 2", "8.mboxes=S: 1", "mbox-6:1=S: 1", "mbox-6:2=S: 2"}));
    EXPECT_EQ(read(SourceOptions{.paths = {path("4.txt"), path("5.mbox")}, .single = true}),
              (Seen{"4.txt=S: 1", "5.mbox=S: 1"}));
}

TEST_F(SourcesTest, ReadsTheMembersOfArchives) {
    write("x/1.eml", mailbox);
    write("x/2", mailbox);
    write("x/3.pdf", "%PDF-1.7\n");
    write("x/cur/4", mailbox);
    write("x/5", "");
    // Its member is flagged as encrypted.
    write("x/6.zip", std::string("PK\3\4\24\0\1\0\0\0\0\0\0\0\0\0\0\0\0\0\0\0\15\0\0\0\1\0\0\0s"
                                 "S: 1234567890PK\5\6",
                                 48));
    // The checksum of its member is wrong.
    write("x/8.zip", std::string("PK\3\4\24\0\0\0\0\0\0\0\0\0\1\1\1\1\4\0\0\0\4\0\0\0\1\0\0\0s"
                                 "S: 8PK\5\6",
                                 39));
    fs::create_symlink("2", folder_ / "x/7");
    const std::string tar = "cd " + path() + " && tar --sort=name -cf a.tar ./x && gzip a.tar";
    ASSERT_EQ(std::system(tar.c_str()), 0);
    const std::string cut = contentOf(path("a.tar.gz"));
    write("b.tgz", cut.substr(0, cut.size() / 2));
    fs::remove_all(folder_ / "x");
    EXPECT_EQ(read("a.tar.gz"),
              (Seen{"a.tar.gz/x/1.eml=S: 1", "a.tar.gz/x/2:1=S: 1", "a.tar.gz/x/2:2=S: 2",
                    "a.tar.gz/x/8.zip/s=S: 8", "a.tar.gz/x/cur/4=S: 1", "!a.tar.gz/x/3.pdf",
                    "!a.tar.gz/x/6.zip/s", "!a.tar.gz/x/8.zip/s"}));
    const Seen seen = read("b.tgz");
    EXPECT_EQ(seen.front(), "b.tgz/x/1.eml=S: 1");
    EXPECT_EQ(seen.back(), "!b.tgz");
}

TEST_F(SourcesTest, ReportsWhatIsNoMail) {
    const std::pair<std::string, bool> files[] = {
        {"\xFF\xFES\0", false},
        {"\x89PNG\r\n\x1A\n", false},
        {"\177ELF", false},
        {"%PDF-1.7\n", false},
        {"%PDF-1.7: a field\n\n", true},
        {"BZh91AY&SY:\1\2", false},
        {"BZh91AY&SY :\n", true},
        {"BZh is\n", true},
        {"GIF", true},
        {"\x1F", true},
    };
    for (const auto& [bytes, isMail] : files) {
        write("x", bytes);
        EXPECT_EQ(read("x"), isMail ? Seen{"x=" + bytes.substr(0, bytes.find('\n'))} : Seen{"!x"})
            << bytes;
    }
}

TEST_F(SourcesTest, UnpacksWhatStandsBeforeACut) {
    std::mt19937 random(7);
    std::string text = "S: x\n\n";
    while (text.size() < 150'000) text += static_cast<char>('a' + random() % 16);
    const std::string packed = gzipOf(text);
    std::size_t before = 0;
    for (std::size_t size = 99; size < packed.size(); size += 997) {
        write("x.gz", packed.substr(0, size));
        std::string bytes;
        Seen problems;
        readSources(
            SourceOptions{.paths = {path("x.gz")}},
            [&](const SourceMessage& m) { bytes += m.bytes; },
            [&](std::string_view, std::string_view reason) { problems.emplace_back(reason); });
        ASSERT_TRUE(text.starts_with(bytes) && bytes.size() >= before) << size;
        EXPECT_EQ(problems, Seen{"damaged compression: it ends too early"});
        before = bytes.size();
    }
    EXPECT_GT(before, text.size() - 5'000);
}

TEST_F(SourcesTest, BoundsWhatUnpacks) {
    write("a", "S: a");
    const std::string pack =
        "cd " + path() + " && i=0; while [ $i -lt 7 ]; do gzip -n <a >b; mv b a; i=$((i+1)); done";
    ASSERT_EQ(std::system(pack.c_str()), 0);
    EXPECT_EQ(read("a"), Seen{"!a"});
    write("c", mailbox);
    const std::string bomb =
        "cd " + path() + " && (cat c; head -c 90000000 /dev/zero) | gzip -1 | gzip >a";
    ASSERT_EQ(std::system(bomb.c_str()), 0);
    EXPECT_EQ(read("a"), (Seen{"a:1=S: 1", "!a:2", "!a"}));
    const std::string inside =
        "cd " + path() + " && (cat c; head -c 50000000 /dev/zero) | gzip -1 >x && cp x y && " +
        "tar -c x y --transform 's/y/" + std::string(5000, 'y') + "/' | gzip >a";
    ASSERT_EQ(std::system(inside.c_str()), 0);
    const std::string name = "a/" + std::string(PATH_MAX, 'y');
    EXPECT_EQ(read("a"), (Seen{"a/x:1=S: 1", "a/x:2=S: 2", name + ":1=S: 1", name + ":2=S: 2",
                               "!" + name, "!a"}));
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

TEST_F(SourcesTest, ReportsWhatCannotBeReadToItsEnd) {
    write("box", mailbox + std::string(200'000, 'x'));
    fs::create_directories(path("deep/") + [] {
        std::string folders;
        while (folders.size() < 300) folders += "d/";
        return folders;
    }());
    Seen problems;
    readSources(
        {.paths = {path("box"), path("deep")}},
        [&](const SourceMessage&) { fs::resize_file(path("box"), 99); },
        [&](std::string_view, std::string_view reason) { problems.emplace_back(reason); });
    EXPECT_EQ(problems, (Seen{"became shorter while it was read",
                              "is in too many folders, one in the other"}));
}

TEST_F(SourcesTest, DoesNotTrustItsListing) {
    for (const char* name : {"1", "2", "3", "4"}) write(name, "S: x");
    Seen events;
    readSources(
        {.paths = {path()}},
        [&](const SourceMessage& message) {
            events.push_back(nameIn(message.place.source));
            if (events.size() > 1) return;
            for (const char* name : {"2", "3", "4"}) fs::remove(path(name));
            ::mkfifo(path("3").c_str(), 0600);
            fs::create_symlink("1", path("4"));
        },
        [&](std::string_view, std::string_view reason) { events.emplace_back(reason); });
    EXPECT_EQ(events, (Seen{"1", std::strerror(ENOENT), "is a named pipe", "4"}));
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
    std::string cut = gzipOf(mailbox);
    write("3.gz", cut.substr(0, cut.size() - 9));
    write("4.xz", xzOfA);
    write("5", "\x1F\x8B nonsense");
    write("6.zst", std::string("\x28\xB5\x2F\xFD\x20\x04\x21\x00\x00S: z", 13));
    write("7.gz", gzipOf(""));
    write("m/cur/x", gzipOf("S: m"));
    fs::create_directories(folder_ / "m/new");
    write("8.gz", gzipOf(mailbox) + gzipOf("\n" + mailbox) + std::string(3, '\0'));
    cut[cut.size() - 5] ^= 1;
    write("9.gz", cut);
    write("a.gz", gzipOf("S: a") + '\x1F');
    EXPECT_EQ(read(), (Seen{"1.gz:1=S: 1", "1.gz:2=S: 2", "2=S: a", "3.gz:1=S: 1", "3.gz:2=S: 2",
                            "6.zst=S: z", "8.gz:1=S: 1", "8.gz:2=S: 2", "8.gz:3=S: 1",
                            "8.gz:4=S: 2", "9.gz:1=S: 1", "9.gz:2=S: 2", "a.gz=S: a",
                            "m/cur/x=S: m", "!3.gz", "!4.xz", "!5", "!9.gz", "!a.gz"}));
}

}  // namespace
}  // namespace bouncecheck
