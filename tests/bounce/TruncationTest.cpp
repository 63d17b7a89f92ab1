#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include <bouncecheck/LogNull.h>
#include <bouncecheck/classes/BounceCheck.h>
#include <bouncecheck/classes/Email2.h>

namespace bouncecheck {
namespace {

namespace fs = std::filesystem;

/// Counts the contexts that are open; reads nothing of what is logged.
class DepthLog final : public LogBase {
public:
    int depth() const noexcept { return depth_; }

    void LogInfo(const char*) override {}
    void LogWarning(const char*) override {}
    void LogError(const char*) override {}
    void EnterContext(const char*, bool) override { ++depth_; }
    void LeaveContext() override { --depth_; }
    void LogData(const char*, const char*) override {}

private:
    int depth_ = 0;
};

// Mail is cut by quotas, by filters and on the way. Which verdict is left is not
// the question here; the sanitizers ask theirs at every byte.
TEST(Truncation, LeavesAMessageThatIsClassified) {
    BounceCheck check;
    StringBuffer address;
    StringBuffer data;
    for (const auto& entry : fs::directory_iterator(SAMPLES_DIR)) {
        SCOPED_TRACE(entry.path().filename().string());
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string whole(std::istreambuf_iterator<char>(file), {});
        ASSERT_FALSE(whole.empty());
        for (std::size_t size = 0; size <= whole.size(); ++size) {
            // On the heap and no longer than its text, however short it is.
            std::string cut;
            cut.reserve(std::max<std::size_t>(size, 16));
            cut.assign(whole, 0, size);
            Email2 email(std::move(cut));
            DepthLog log;
            const int type = check.checkEmail(email, address, data, log);
            ASSERT_STRNE(bounceTypeName(type), "") << size << " bytes";
            ASSERT_EQ(log.depth(), 0) << size << " bytes";
            // Transfer encodings and HTML shrink a body; 8-bit charsets and line
            // ends let it grow, at most to three bytes for one.
            ASSERT_LE(data.view().size(), 3 * size + 2) << size << " bytes";
        }
    }
}

}  // namespace
}  // namespace bouncecheck
