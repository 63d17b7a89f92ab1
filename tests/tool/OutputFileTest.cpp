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
}

TEST_F(OutputFileTest, TellsWhatCannotBeWritten) {
    const std::string message = write("m", failedReport);
    for (const std::string& target : {std::string("/dev/full"), path("none/x"), path()}) {
        const ToolRun result = run({message, "-o", target});
        EXPECT_EQ(result.status, EXIT_SOME_UNREADABLE) << target;
        EXPECT_EQ(std::ranges::count(result.err, '\n'), 1) << result.err;
    }
    // A file that is read is not written to.
    EXPECT_EQ(run({message, "-o", path("../") + folder_.filename().string() + "/m"}).status,
              EXIT_WRONG_USAGE);
    EXPECT_EQ(contentOf(message), failedReport);
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

/// Ends a run that waits for more input by a signal; its status as `wait` has it.
int statusAfter(int signal, const std::vector<std::string>& arguments, const std::string& ready) {
    int input[2];
    EXPECT_EQ(::pipe(input), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        ::dup2(input[0], STDIN_FILENO);
        ::close(input[0]);
        ::close(input[1]);
        ::_exit(run(arguments).status);
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
    ::close(input[1]);
    return status;
}

TEST_F(OutputFileTest, GoesAwayWhenASignalComes) {
    for (const int signal : {SIGINT, SIGTERM}) {
        const int status = statusAfter(signal, {"-", "-o", path("out")}, path());
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal) << status;
        EXPECT_EQ(fileCount(), 0U);
    }
    // A list of paths is waited for in the same way.
    const int status = statusAfter(SIGTERM, {"--from-list", "-", "-o", path("out")}, path());
    EXPECT_TRUE(WIFSIGNALED(status) && fileCount() == 0U) << status;
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
    EXPECT_TRUE(fs::is_empty(out + "/hard/tmp") && fs::is_directory(out + "/hard/cur"));
    EXPECT_FALSE(fs::exists(out + "/none"));
    EXPECT_EQ(run({path("in/1"), "--sort-into", path("in/2")}).status, EXIT_SOME_UNREADABLE);
}

}  // namespace
}  // namespace bouncecheck
