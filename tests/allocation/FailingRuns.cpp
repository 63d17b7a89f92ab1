// Runs the tool while one allocation after the other fails, alone or with all behind it: each time
// every message is shown or a problem is reported that names it, or else the whole run fails in one
// line and writes no page. A page is complete, and no temporary file stays.
//
//   failing_runs FOLDER     an empty folder to work in

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <ostream>
#include <span>
#include <streambuf>
#include <string>
#include <string_view>
#include <vector>

#include "allocation/FailAllocation.h"
#include "tool/Options.h"
#include "tool/Run.h"

namespace {

namespace fs = std::filesystem;

/// Keeps what is written without an allocation.
class FixedBuffer final : public std::streambuf {
public:
    FixedBuffer() { setp(room_.data(), room_.data() + room_.size()); }
    std::string_view text() const { return {pbase(), static_cast<std::size_t>(pptr() - pbase())}; }

private:
    std::array<char, 1 << 16> room_;
};

struct Place {
    std::string file;
    std::string index;
    /// Of the file, and of the message in it.
    std::string fileProblem;
    std::string problem;
};

/// A form of output that has the file and the number of each message in front.
struct Form {
    std::vector<const char*> arguments;
    /// What stands in front of both, between them and behind them.
    std::string begin;
    std::string between;
    std::string end;
    /// How often the last stands in each line.
    long values;
};

const Form json = {{"--format=json"}, "{\"source\":\"", "\",\"index\":", ",\"type\":", 1};
const Form tsv = {{"--format=tsv", "--fields=source,index,recipient"}, "\n", "\t", "\t", 2};

bool holds(std::string_view text, std::string_view part) { return text.find(part) != text.npos; }

std::string contentOf(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class Runs {
public:
    explicit Runs(const fs::path& folder)
        : page_((folder / "page").string()), mail_((folder / "mail").string()) {
        fs::create_directories(mail_);
        const std::string report =
            "Subject: x\nDate: Thu, 18 Sep 2008 17:54:04 +0000\n"
            "Content-Type: multipart/report; boundary=b\n\n--b\n\nSorry.\n"
            "--b\nContent-Type: message/delivery-status\n\n"
            "Final-Recipient: rfc822;a@x.example\nAction: failed\n--b--\n";
        // Large enough for a batch each, so that there are threads.
        const std::string large = report + std::string(300'000, '\n');
        for (const char* name : {"1.eml", "2.eml", "4.eml"}) add(name, large, {1});
        const std::string envelope = "From a Thu Sep 18 17:54:04 2008\n";
        add("3.mbox", envelope + report + "\n" + envelope + "Subject: y\n\ntext\n", {1, 2});
    }

    /// False, with the reason printed, when something was wrong.
    bool survive(const Form& form, const char* jobs, bool lasts) {
        std::vector<const char*> arguments = {"bouncecheck", "-j",          jobs,
                                              "--html",      page_.c_str(), mail_.c_str()};
        arguments.insert(arguments.end(), form.arguments.begin(), form.arguments.end());
        const int size = static_cast<int>(arguments.size());
        for (long failing = allocationsForOptions(size, arguments.data());; ++failing) {
            FixedBuffer out;
            FixedBuffer err;
            std::ostream outStream(&out);
            std::ostream errStream(&err);
            bouncecheck::failAllocation(failing, lasts);
            const int status = bouncecheck::runTool(size, arguments.data(), outStream, errStream);
            const bool none = bouncecheck::takeBackFailure();
            if (const char* fault = faultOf(form, status, none, out.text(), err.text())) {
                std::fprintf(stderr, "-j %s, allocation %ld: %s\n%s%s", jobs, failing, fault,
                             std::string(out.text()).c_str(), std::string(err.text()).c_str());
                return false;
            }
            if (none) return true;
        }
    }

private:
    /// Those are left out: some versions of CLI11 end the program when one fails.
    static long allocationsForOptions(int size, const char* const* arguments) {
        std::ostream none(nullptr);
        int status = 0;
        const long before = bouncecheck::allocationCount();
        bouncecheck::parseOptions(size, arguments, none, none, status);
        return bouncecheck::allocationCount() - before;
    }

    void add(const char* name, const std::string& content, std::initializer_list<int> indexes) {
        const std::string file = mail_ + '/' + name;
        std::ofstream(file, std::ios::binary) << content;
        for (const int index : indexes) {
            const std::string number = std::to_string(index);
            const std::string place = indexes.size() > 1 ? file + ':' + number : file;
            places_.push_back({.file = file,
                               .index = number,
                               .fileProblem = "bouncecheck: " + file + ": ",
                               .problem = "bouncecheck: " + place + ": "});
        }
    }

    const char* faultOf(const Form& form, int status, bool none, std::string_view out,
                        std::string_view err) const {
        const std::string page = contentOf(page_);
        fs::remove(page_);
        if (std::distance(fs::directory_iterator(fs::path(page_).parent_path()), {}) != 1) {
            return "a temporary file stayed";
        }
        if ((none && status != 0) || (status == 0) != err.empty()) return "the wrong status";
        if (holds(err, "bouncecheck: not enough memory\n")) {
            return page.empty() ? nullptr : "a failed run wrote a page";
        }
        if (!page.ends_with("</html>\n")) return "the page is cut";
        const bool all = std::ranges::all_of(places_, [&](const Place& place) {
            return holds(out, form.begin + place.file + form.between + place.index + form.end) ||
                   holds(err, place.problem) || holds(err, place.fileProblem) ||
                   holds(err, "bouncecheck: " + mail_ + ": ");
        });
        if (!all) return "a message is neither shown nor reported";
        return areWhole(out, form) ? nullptr : "a line is not whole";
    }

    static bool areWhole(std::string_view out, const Form& form) {
        for (std::size_t end; (end = out.find('\n')) != out.npos; out.remove_prefix(end + 1)) {
            const std::string_view line = out.substr(0, end);
            long values = 0;
            for (std::size_t at = 0; (at = line.find(form.end, at)) != line.npos; ++at) ++values;
            if (values != form.values) return false;
        }
        return out.empty();
    }

    std::string page_;
    std::string mail_;
    std::vector<Place> places_;
};

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    fs::remove_all(argv[1]);
    fs::create_directories(argv[1]);
    Runs runs(argv[1]);
    const bool survived = runs.survive(json, "1", true) && runs.survive(json, "2", false) &&
                          runs.survive(json, "2", true) && runs.survive(tsv, "1", false) &&
                          runs.survive(tsv, "1", true);
    fs::remove_all(argv[1]);
    return survived ? 0 : 1;
}
