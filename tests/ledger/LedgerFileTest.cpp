#include <fstream>
#include <iterator>
#include <utility>

#include "ledger/LedgerError.h"
#include "ledger/LedgerTest.h"
#include "ledger/Schema.h"

namespace bouncecheck::ledger {
namespace {

using Kind = LedgerError::Kind;

std::string contentOf(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class LedgerFileTest : public LedgerTest {
protected:
    /// A ledger with a message, whose file holds all.
    std::string made() {
        {
            Ledger ledger = open();
            const MessageEntry message = messageOn(1, report("gone"));
            Recorder(ledger).record({&message, 1}, 1 << 30);
        }
        return contentOf(path());
    }

    /// How opening and recording fails with these bytes in the file, which stay.
    std::pair<Kind, std::string> problemWith(const std::string& bytes) {
        std::ofstream(path(), std::ios::binary) << bytes;
        std::pair<Kind, std::string> problem = {Kind::missing, "none"};
        try {
            Ledger ledger = open();
            const MessageEntry message = messageOn(1, report("full"));
            Recorder(ledger).record({&message, 1}, 1 << 30);
        } catch (const LedgerError& error) {
            problem = {error.kind(), error.what()};
        }
        EXPECT_EQ(contentOf(path()), bytes);
        return problem;
    }
};

TEST_F(LedgerFileTest, RefusesWhatIsNoLedger) {
    std::string other = made();
    other[68] = 'X';
    std::string foreign = made();
    foreign[63] = 0;  // user_version
    for (const std::string& bytes :
         {std::string("To: a@example.org\n\nx\n"), other, foreign, std::string(made(), 0, 99)}) {
        const auto [kind, problem] = problemWith(bytes);
        EXPECT_EQ(kind, Kind::refused);
        EXPECT_EQ(problem, path() + ": is no ledger");
    }
}

TEST_F(LedgerFileTest, SaysWhatToDoWithAnEmptyFileAndALinkToNone) {
    const auto [kind, problem] = problemWith("");
    EXPECT_EQ(kind, Kind::refused);
    EXPECT_EQ(problem, path() + ": is empty: remove it, and a ledger is made in its place");
    std::filesystem::create_symlink("nowhere", path("link"));
    try {
        Ledger ledger = open("link");
        FAIL();
    } catch (const LedgerError& error) {
        EXPECT_EQ(error.kind(), Kind::refused);
    }
    EXPECT_FALSE(std::filesystem::exists(path("nowhere")));
}

TEST_F(LedgerFileTest, RefusesThatOfALaterVersion) {
    std::string later = made();
    later[63] = static_cast<char>(schemaVersion() + 1);
    const auto [kind, problem] = problemWith(later);
    EXPECT_EQ(kind, Kind::refused);
    EXPECT_EQ(problem, path() + ": was written by a later version of bouncecheck");
}

TEST_F(LedgerFileTest, ReportsDamageAndChangesNothing) {
    const std::string whole = made();
    const auto pageOf = [&](const char* text) { return whole.find(text) / 4096 * 4096; };
    for (const std::size_t at : {std::size_t{100}, pageOf("ann@example.org")}) {
        std::string damaged = whole;
        damaged.replace(at, 1000, 1000, '\xA5');
        const auto [kind, problem] = problemWith(damaged);
        EXPECT_EQ(kind, Kind::damaged) << at;
        EXPECT_TRUE(problem.starts_with(path() + ": is damaged: ")) << problem;
    }
}

TEST_F(LedgerFileTest, NeedsALedgerToReadOne) {
    try {
        Ledger ledger(path(), Ledger::Missing::refuse);
        FAIL();
    } catch (const LedgerError& error) {
        EXPECT_EQ(error.kind(), Kind::missing);
        EXPECT_EQ(error.what(), path() + ": there is no such ledger");
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder_));
}

TEST_F(LedgerFileTest, TakesNoLogOfAnother) {
    std::ofstream(path() + "-wal") << "x";
    EXPECT_THROW(open(), LedgerError);
    EXPECT_FALSE(std::filesystem::exists(path()));
}

TEST_F(LedgerFileTest, IsCompleteFromTheBeginning) {
    Ledger ledger = open();
    EXPECT_EQ(faultsOf(ledger), "");
    Statement mode(ledger.database(), "PRAGMA journal_mode");
    ASSERT_TRUE(mode.step());
    EXPECT_EQ(mode.text(0), "wal");
}

}  // namespace
}  // namespace bouncecheck::ledger
