#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "bounce/BounceCheck.h"
#include "bounce/VerdictLabel.h"
#include "log/LogTrace.h"
#include "mime/Email2.h"

namespace bouncecheck {

/// What `checkEmail` had to say about one message.
struct Classification {
    int type = 0;
    std::string address;
    std::string data;
    std::vector<LogTrace::Event> trace;

    std::string label() const { return std::string(lastVerdictLabel(trace)); }
    bool logged(std::string_view line) const {
        return std::ranges::any_of(trace, [&](const LogTrace::Event& event) {
            return event.kind == LogTrace::Kind::info && event.text == line;
        });
    }
    /// The values under a tag, joined by '|'.
    std::string values(std::string_view tag) const {
        std::string all;
        for (const LogTrace::Event& event : trace) {
            if (event.kind != LogTrace::Kind::data || event.text != tag) continue;
            all.append(all.empty() ? "" : "|").append(event.value);
        }
        return all;
    }
    /// The names of the contexts that were opened, joined by ' '.
    std::string contexts() const {
        std::string all;
        for (const LogTrace::Event& event : trace) {
            if (event.kind != LogTrace::Kind::enter) continue;
            all.append(all.empty() ? "" : " ").append(event.text);
        }
        return all;
    }

    bool operator==(const Classification&) const = default;
};

inline Classification classifyWith(BounceCheck& check, std::string message) {
    Email2 email(std::move(message));
    StringBuffer address;
    StringBuffer data;
    address.setString("of the message before");
    data.setString("of the message before");
    LogTrace log;
    Classification result;
    result.type = check.checkEmail(email, address, data, log);
    EXPECT_EQ(log.depth(), 0U) << "contexts left open";
    result.address = address.view();
    result.data = data.view();
    result.trace = log.takeEvents();
    return result;
}

inline Classification classified(std::string message) {
    BounceCheck check;
    return classifyWith(check, std::move(message));
}

/// `BounceCheck` with its steps and members in the open.
class OpenCheck : public BounceCheck {
public:
    using BounceCheck::applyRules;
    using BounceCheck::checkEmailBody;
    using BounceCheck::containsIndicator;
    using BounceCheck::m_sbBounceAddr;
    using BounceCheck::m_sbBounceData;
    using BounceCheck::m_sbFromAddr;
    using BounceCheck::m_sbFromName;
    using BounceCheck::m_sbSubject;
};

/// A multipart/report with a text and the given report fields.
inline std::string reportMessage(std::string_view fields, std::string_view text = "Sorry.",
                                 std::string_view header = "") {
    std::string message;
    message.append(header)
        .append(
            "From: Mailer <mta@relay.example>\nSubject: About your mail\n"
            "Content-Type: multipart/report; boundary=b1\n\n--b1\n\n")
        .append(text)
        .append(
            "\n--b1\nContent-Type: message/delivery-status\n\nReporting-MTA: dns; x.example\n\n")
        .append(fields)
        .append("\n--b1--\n");
    return message;
}

}  // namespace bouncecheck
