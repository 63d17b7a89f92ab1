#include "tool/OutputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>

#include "tool/ToolRun.h"

namespace bouncecheck {
namespace {

class OutputFileTest : public Tool {
protected:
    std::size_t fileCount() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder_), {}));
    }
};

TEST_F(OutputFileTest, AppearsOnlyWhenWhole) {
    const std::string file = write("x", "before");
    ::chmod(file.c_str(), 0640);
    fs::create_symlink("x", folder_ / "link");
    {
        OutputFile output(path("link"));
        output.stream() << "half";
    }
    EXPECT_EQ(contentOf(file), "before");
    OutputFile output(path("link"));
    output.stream() << std::string(200'000, 'x');
    EXPECT_EQ(contentOf(file), "before");
    output.commit();
    EXPECT_EQ(contentOf(file), std::string(200'000, 'x'));
    EXPECT_TRUE(fs::is_symlink(folder_ / "link"));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0640));
    EXPECT_EQ(fileCount(), 2U);
    // What a link leads to need not be there yet.
    fs::create_symlink("new", folder_ / "dangling");
    OutputFile(path("dangling")).commit();
    EXPECT_TRUE(fs::is_symlink(folder_ / "dangling"));
    EXPECT_TRUE(fs::is_regular_file(folder_ / "new"));
}

TEST_F(OutputFileTest, TellsWhatCannotBeWritten) {
    const std::string message = write("m", failedReport);
    for (const std::string& target : {std::string("/dev/full"), path("none/x"), path()}) {
        const ToolRun result = run({message, "-o", target});
        EXPECT_EQ(result.status, EXIT_SOME_UNREADABLE) << target;
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
        EXPECT_TRUE(result.err.starts_with("bouncecheck: " + target + ": ")) << result.err;
    }
    EXPECT_EQ(run({message, "-o", "/dev/null"}).status, EXIT_ALL_CLASSIFIED);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_EQ(fileCount(), 1U);
}

TEST_F(OutputFileTest, HoldsTheWholeOutput) {
    const std::string message = write("m", failedReport);
    EXPECT_EQ(run({message, "-o", path("out")}).out, "");
    EXPECT_EQ(contentOf(path("out")), run({message}).out);
    // It is no message of the folder that it is written to.
    write("a", "\n" + std::string(100'000, 'x'));
    run({path(), "-j", "1", "--format", "json", "--data", "-o", path("z")});
    EXPECT_EQ(std::ranges::count(contentOf(path("z")), '\n'), 3);
    // What could not be read does not keep the rest from being written.
    const ToolRun half = run({path("none"), message, "-o", path("out2")});
    EXPECT_EQ(half.status, EXIT_SOME_UNREADABLE);
    EXPECT_EQ(half.err, "bouncecheck: " + path("none") + ": No such file or directory\n");
    EXPECT_EQ(contentOf(path("out2")), run({message}).out);
}

TEST_F(OutputFileTest, ReplacesNoMail) {
    const std::string mail = write("d/a.eml", failedReport);
    write("d/z.eml", failedReport);
    const std::string list = write("list", mail + "\n");
    fs::create_hard_link(mail, path("hard"));
    fs::create_symlink("d/a.eml", path("soft"));
    fs::create_directories(path("links/cur"));
    fs::create_directories(path("links/new"));
    fs::create_symlink(mail, path("links/cur/1"));
    const std::vector<std::vector<std::string>> runs = {
        {mail, "-o", path("d/../d/a.eml")},
        {path("d"), "-o", mail},
        {path("d"), "--html", mail},
        {path("d"), "-o", path("hard")},
        {path("d"), "-o", path("soft")},
        {path("links"), "-o", mail},
        {"--from-list", list, "-o", mail},
        {"--from-list", list, "-o", list},
        {path("d"), "-o", path("new"), "--html", path("d/../new")},
        {path("d"), "--sort-into", path("d/../d")},
    };
    for (const auto& arguments : runs) {
        const ToolRun result = run(arguments);
        EXPECT_EQ(result.status, EXIT_WRONG_USAGE) << arguments.back();
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
        EXPECT_EQ(contentOf(mail), failedReport) << arguments.back();
        EXPECT_EQ(contentOf(list), mail + "\n");
        EXPECT_FALSE(fs::exists(path("new")));
    }
    const int input = ::open(mail.c_str(), O_RDONLY);
    const int before = ::dup(STDIN_FILENO);
    ::dup2(input, STDIN_FILENO);
    for (const std::string& target : {mail, std::string("/dev/stdin")}) {
        EXPECT_EQ(run({"-o", target}).status, EXIT_WRONG_USAGE);
        EXPECT_EQ(contentOf(mail), failedReport);
    }
    ::dup2(before, STDIN_FILENO);
    ::close(before);
    ::close(input);
}

TEST_F(OutputFileTest, IsNoMessageOfTheNextRun) {
    write("d/a.eml", std::string("From: a@x.example\n") + failedReport);
    write("d/b.eml",
          "Content-Type: multipart/report; boundary=b\n\n--b\nContent-Type: "
          "message/feedback-report\n\nFeedback-Type: abuse\nOriginal-Rcpt-To: "
          "\"a: b\"@x.example\n--b--\n");
    const std::vector<std::vector<std::string>> forms = {
        {},
        {"--color", "always"},
        {"--fields", "from,subject"},
        {"--format", "json", "--data"},
        {"--format", "csv"},
        {"--format", "tsv", "--fields", "from"},
        {"--summary"},
        {"--summary", "--format", "json"},
        {"--addresses"},
        {"--suppress"},
        {"--suppress", "--format", "csv"},
        {"--explain"},
        {"--only", "soft"},
    };
    for (std::vector<std::string> form : forms) {
        for (const char* option : {"-o", "--html"}) {
            const std::string file = path("d/out");
            std::vector<std::string> arguments = form;
            arguments.insert(arguments.end(), {option, file, path("d")});
            EXPECT_EQ(run(arguments).status, EXIT_ALL_CLASSIFIED);
            const std::string first = contentOf(file);
            EXPECT_EQ(run(arguments).status, EXIT_ALL_CLASSIFIED) << first;
            EXPECT_EQ(contentOf(file), first);
            fs::remove(file);
        }
    }
}

/// Ends a run by a signal once something is in the folder `ready` and the run waits: for
/// input, or for a reader of its output. Its status as `wait` has it.
int statusAfter(int signal, const std::vector<std::string>& arguments, const std::string& ready) {
    int input[2];
    int output[2];
    EXPECT_EQ(::pipe(input), 0);
    EXPECT_EQ(::pipe(output), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        // Whoever runs the tests may ignore it, and must not wait for ever.
        std::signal(signal, SIG_DFL);
        ::alarm(20);
        ::dup2(input[0], STDIN_FILENO);
        ::close(input[1]);
        std::vector<const char*> argv = {"bouncecheck"};
        for (const std::string& argument : arguments) argv.push_back(argument.c_str());
        FdStream out(output[1], "pipe");
        ::_exit(runTool(static_cast<int>(argv.size()), argv.data(), out, out));
    }
    ::close(input[0]);
    const std::string text =
        "From a Thu Sep 18 17:54:04 2008\nS: 1\n\none\n\nFrom a Thu Sep 18 17:54:04 2008\n";
    EXPECT_TRUE(writeAll(input[1], text.data(), text.size()));
    while (fs::is_empty(ready)) ::usleep(1000);
    ::usleep(20'000);  // until it waits
    ::kill(child, signal);
    int status = 0;
    ::waitpid(child, &status, 0);
    for (const int fd : {input[1], output[0], output[1]}) ::close(fd);
    return status;
}

TEST_F(OutputFileTest, GoesAwayWhenASignalComes) {
    const std::string large = write("in", "S: x\n\n" + std::string(300'000, 'x'));
    fs::create_directories(path("out"));
    const std::vector<std::vector<std::string>> runs = {
        {"-", "-o", path("out/x")},
        {"--from-list", "-", "-o", path("out/x")},
        // Standard output is full, and nobody reads it.
        {large, "--format", "json", "--data", "--html", path("out/x")},
    };
    for (const auto& arguments : runs) {
        for (const int signal : {SIGINT, SIGTERM}) {
            const int status = statusAfter(signal, arguments, path("out"));
            EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
            EXPECT_TRUE(fs::is_empty(path("out"))) << arguments[0];
        }
    }
}

TEST_F(OutputFileTest, SortsCopiesIntoMaildirs) {
    write("in/1", failedReport);
    write("in/a/later/0", "S: none\n\n");
    write("in/2", "S: none\n\n");
    write("in/3", "From a Thu Sep 18 17:54:04 2008\n" + std::string(failedReport) + "\n");
    const std::string out = path("in/a/later/sorted");
    // The second time what is there already is no source.
    for (const std::size_t copies : {2U, 4U}) {
        EXPECT_EQ(run({path("in"), "-j", "1", "--only", "hard", "--sort-into", out}).status, 0);
        std::size_t count = 0;
        for (const auto& entry : fs::directory_iterator(out + "/hard/new")) {
            EXPECT_EQ(contentOf(entry.path()), failedReport);
            ++count;
        }
        EXPECT_EQ(count, copies);
    }
    EXPECT_TRUE(fs::is_empty(out + "/hard/tmp"));
    EXPECT_TRUE(fs::is_directory(out + "/hard/cur"));
    EXPECT_FALSE(fs::exists(out + "/none"));
    EXPECT_EQ(run({path("in/1"), "--sort-into", path("in/2")}).status, EXIT_SOME_UNREADABLE);
}

}  // namespace
}  // namespace bouncecheck
