#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "reasons/ReasonFinder.h"
#include "recipients/Explanation.h"
#include "recipients/MessageReading.h"
#include "recipients/RecipientList.h"

namespace bouncecheck {

/// Finds why the recipients of a list failed, and what to do about them.
class RecipientReasons {
public:
    /// Of a message and a list that outlive it.
    RecipientReasons(const MessageReading& reading, RecipientList& list) noexcept
        : reading_(reading), list_(list) {}

    /// Looks for the reasons in what is known of the recipients now. Whether each of them who
    /// failed has one that nothing else may change.
    bool explainReported();
    /// What the text says of a recipient whose diagnostic a report gives.
    void addSaid(const std::string& address, std::string&& said) {
        said_.emplace(address, std::move(said));
    }
    /// The reason that the notice gives, looked for once for all recipients.
    const ReasonFinding& ofNotice();
    /// Forgets what `explainReported` found, after which the list has changed.
    void forgetReported() noexcept { reported_.clear(); }

    /// Fills reason, evidence, codes and advice of all who have no reason. `notice` is what the
    /// message says to people, where that may count; else null.
    void fill(const Notice* notice);

private:
    /// What `explainReported` found of a recipient whom the list had then.
    struct Reported {
        ReasonFinding finding;
        /// Whether the report has words for it; else it counts until others are found.
        bool hasDiagnostic = false;
        std::string replyCode;
        std::string status;
    };

    const Reported* explainedBefore(std::size_t index) const;
    void fill(std::size_t index, const Notice* notice);
    Explanation explain(const Recipient& recipient, const ReplyCodes& codes, const Notice* notice);

    const MessageReading& reading_;
    RecipientList& list_;
    std::vector<Reported> reported_;
    std::optional<ReasonFinding> noticeFinding_;
    /// By address.
    std::unordered_map<std::string, std::string> said_;
};

}  // namespace bouncecheck
