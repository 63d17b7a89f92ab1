#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include <bouncecheck/LogTrace.h>
#include <bouncecheck/bouncecheck.h>
#include <bouncecheck/classes/BounceCheck.h>
#include <bouncecheck/classes/Email2.h>
#include "bounce/MessageClassifier.h"
#include "mime/Entity.h"

namespace bouncecheck {

/// What `checkEmail` had to say about one message.
struct Classification {
    int type = 0;
    std::string address;
    std::string data;
    std::vector<LogTrace::Event> trace;
    /// The label of the rule, the phrase that it found, and the source of the address.
    std::string label;
    std::string phrase;
    TextOf phraseIn = TextOf::nothing;
    AddressSource addressSource = AddressSource::none;

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
            all.append(all.empty() ? "" : "|").append(event.value.view());
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

/// Classifies by the class alone; what only findings have stays empty.
inline Classification classifyByClass(BounceCheck& check, const std::string& message) {
    Email2 email(message);
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

/// Classifies by the class, by the classifier that gives findings and by that of users, which
/// must agree.
inline Classification classifyWith(BounceCheck& check, const std::string& message) {
    Classification result = classifyByClass(check, message);
    LogTrace log;
    const ClassifiedMessage other = MessageClassifier().classify(Entity(message), log);
    EXPECT_EQ(other.type, result.type);
    EXPECT_EQ(other.finding.address.text.view(), result.address);
    EXPECT_EQ(other.text.view(), result.data);
    EXPECT_EQ(log.takeEvents(), result.trace);
    const Finding& finding = other.finding;
    const Verdict verdict = classify(message);
    EXPECT_EQ(verdict.type, result.type);
    EXPECT_EQ(verdict.rule, finding.rule);
    EXPECT_EQ(verdict.match, finding.match);
    EXPECT_EQ(verdict.address, result.address);
    EXPECT_EQ(verdict.text.view(), result.data);
    if (finding.rule) {
        result.label = finding.rule->label();
        EXPECT_EQ(finding.rule->type, result.type);
        EXPECT_TRUE(result.logged(finding.rule->line));
    }
    result.phrase = finding.match.phrase;
    result.phraseIn = finding.match.text;
    result.addressSource = finding.address.source;
    return result;
}

inline Classification classified(const std::string& message) {
    BounceCheck check;
    return classifyWith(check, message);
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
