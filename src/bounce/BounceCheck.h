#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "bounce/BodyMemory.h"
#include "bounce/BounceRule.h"
#include "bounce/BounceType.h"
#include "bounce/TextScan.h"
#include "text/StringBuffer.h"
#include "text/XString.h"

namespace bouncecheck {

class Email2;
class LogBase;

/// Tells what a returned or automatic message means.
///
///     Email2 email(bytes);
///     BounceCheck check;
///     StringBuffer address, data;
///     LogTrace log;
///     int type = check.checkEmail(email, address, data, log);
///
/// An ordered sequence of checks runs over the message; the first verdict
/// counts, and the log tells every step on the way to it, ending in the label of
/// the rule ("Bounce type 1.10"). Nothing about a message is an error: what is
/// missing fails its tests.
///
/// One object classifies any number of messages, one at a time; distinct objects
/// may work on distinct threads, as they share constant tables only. Time is
/// linear in the size of the message. Nothing is thrown but the failure of an
/// allocation.
class BounceCheck {
public:
    BounceCheck() = default;
    virtual ~BounceCheck() = default;

    /// Classifies `email` and returns a BounceType.
    ///
    /// Both buffers are emptied and filled: `bounceAddr` with the address that
    /// failed or answered (may stay empty), `bounceData` with the text that was
    /// decided upon: decoded, UTF-8 unless the charset was unknown, with CRLF line
    /// ends unless it was no text. What `log` throws is swallowed.
    int checkEmail(Email2& email, StringBuffer& bounceAddr, StringBuffer& bounceData, LogBase& log);

    /// Makes `m_sbBounceAddr` a bare address: brackets, UTF-7 forms and one
    /// leading '@' go; storage paths are no address.
    void cleanBounceAddress();

protected:
    // The steps of checkEmail. Each check returns a BounceType; 0 goes on.

    /// Runs the checks in order; the first verdict, or 0.
    int checkEmailInner(Email2& email, LogBase& log);

    // Loading the message (BounceData.cpp)

    /// Fills all members from the message.
    void loadTransients(Email2& email, LogBase& log);
    /// Rebuilds `m_sbBounceData`.
    void getBounceData(Email2& email, LogBase& log);

    // Reports (Reports.cpp)

    bool isMultipartReport(Email2& email, LogBase& log);
    /// `mprNoBody` becomes true once the report's fields were read.
    int checkMultipartReport(Email2& email, LogBase& log, bool& mprNoBody);
    int checkFeedbackReport(Email2& email, LogBase& log);
    /// False when the message has no feedback type.
    bool getReportFeedbackType(Email2& email, StringBuffer& feedbackType, LogBase& log);
    /// Reads the fields of the report and sets `m_sbBounceAddr`; always true.
    bool getMultipartReportInfo(Email2& email, LogBase& log, StringBuffer& sbDeliveryStatus,
                                StringBuffer& sbAction, StringBuffer& sbDiagnosticCode,
                                StringBuffer& sbDisposition, StringBuffer& sbPlainTextBody);
    /// Reports that a virus scanner wrapped in a multipart/mixed.
    int checkAVGMAIL(Email2& email, LogBase& log);

    // Fixed headers, subjects and phrases (SpecialCases.cpp)

    int checkSpecialSubjects(Email2& email, LogBase& log);
    int checkSpecialCases1(Email2& email, LogBase& log);
    int checkSpecialCases2(Email2& email, LogBase& log);
    int checkSpecialCases3(Email2& email, LogBase& log);

    // Subjects and senders worth a look at the text (PatternLists.cpp)

    int checkSubjectList(Email2& email, LogBase& log);
    int checkFromAddrList(Email2& email, LogBase& log);

    // The text (BodyClassification.cpp, AutoReply.cpp)

    /// Decides by the text of the message and finds the address in it. Begins
    /// with an empty `m_sbBounceAddr`.
    int checkEmailBody(Email2& email, LogBase& log);
    /// Whether `text`, the sender or the subject is that of an automatic reply.
    bool containsAutoReplyIndicator(Email2& email, StringBuffer& text, LogBase& log) const;

    // Phrases and rules (Indicators.cpp)

    /// Whether `text` contains a phrase of `list`, letter case ignored. The list
    /// ends at an empty phrase or null, or after 2001 entries. `matched` becomes
    /// the first phrase in the order of the list that was found, else empty.
    bool containsIndicator(const StringBuffer& text, const char* const* list,
                           StringBuffer& matched) const;
    /// The bounce type of the first rule that matches, and its index; else 0
    /// and 0.
    int applyRules(const BounceRule* rules, int& ruleIndex, LogBase& log) const;

    /// The subject without the tags of spam filters.
    StringBuffer m_sbSubject;
    /// The same.
    XString m_xSubject;
    StringBuffer m_sbFromAddr;
    StringBuffer m_sbFromName;
    bool m_isMultipartReport = false;
    /// The text that most checks search.
    StringBuffer m_sbBounceData;
    /// What `checkEmail` hands out as the address.
    StringBuffer m_sbBounceAddr;

private:
    // BounceCheck.cpp
    int completeVerdict(int type, Email2& email, LogBase& log);
    int reconsiderNone(Email2& email, LogBase& log);
    int autoReply(LogBase& log);
    void takeAddressFromReturnedHeader(Email2& email, LogBase& log);

    // BounceData.cpp
    bool appendFirstBodies(Email2& email, LogBase& log);
    bool appendSecondOfMixed(Email2& email, const Email2& second, LogBase& log);

    // SpecialCases.cpp
    int checkSubjectForms(Email2& email, LogBase& log);
    int checkAolBounce(LogBase& log);
    int checkChallengeService(Email2& email, LogBase& log);
    void takeSender();
    /// Takes the first word of `text`, without the `unwanted` bytes, if it holds
    /// an '@'.
    void takeWord(std::string_view text, std::string_view unwanted);

    // The phases of checkEmailBody, in order. A verdict ends it, be it 0.
    std::optional<int> decideByNoLongerValid(LogBase& log);
    std::optional<int> decideByMarkers(Email2& email, LogBase& log);
    std::optional<int> decideByIndicators(Email2& email, LogBase& log);
    std::optional<int> decideByAttachedMessage(Email2& email, LogBase& log);
    int decideByPlainBody(Email2& email, LogBase& log);
    int decideByRules(LogBase& log);

    std::optional<int> decideNotice(Email2& email, LogBase& log);
    int decideBounce(LogBase& log);
    int decideAutoReply(LogBase& log);
    void fallBackToSender();

    // Indicators.cpp
    TextScan* scanOf(const StringBuffer& text) const noexcept;
    bool isPartOfBounceData(std::string_view text) const noexcept;
    bool findIndicator(const PhraseScan& phrases, const char* const* list,
                       StringBuffer& matched) const;
    bool matches(const BounceRule& rule, const StringBuffer& text) const;
    const StringBuffer* textOf(std::int32_t ruleSource) const noexcept;
    const PhraseScan& dataPhrases() const { return m_dataScan.phrases(); }
    const PhraseScan& subjectPhrases() const { return m_subjectScan.phrases(); }
    const PhraseScan& fromAddrPhrases() const { return m_fromAddrScan.phrases(); }
    const PhraseScan& fromNamePhrases() const { return m_fromNameScan.phrases(); }

    mutable TextScan m_subjectScan{m_sbSubject};
    mutable TextScan m_fromAddrScan{m_sbFromAddr};
    mutable TextScan m_fromNameScan{m_sbFromName};
    mutable TextScan m_dataScan{m_sbBounceData};

    /// Null unless the checks run over one message; empty after a change of the text.
    BodyMemory* memory() const;
    const char* autoReplyLine(Email2& email, const StringBuffer& text, LogBase& log) const;

    mutable std::optional<BodyMemory> m_memory;
};

}  // namespace bouncecheck
