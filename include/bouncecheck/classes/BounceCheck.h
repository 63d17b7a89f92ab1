#pragma once

#include <bouncecheck/BounceRule.h>
#include <bouncecheck/BounceType.h>
#include <bouncecheck/Export.h>
#include <bouncecheck/classes/StringBuffer.h>
#include <bouncecheck/classes/XString.h>

namespace bouncecheck {

class Email2;
class Evidence;
class LogBase;
struct Finding;

/// Decides what a returned or automatic message means.
///
///     Email2 email(bytes);
///     BounceCheck check;
///     StringBuffer address, data;
///     LogTrace log;
///     int type = check.checkEmail(email, address, data, log);
///
/// An ordered sequence of checks runs over the message; the first verdict
/// counts, and the log records every step on the way to it, ending in the label of
/// the rule ("Bounce type 1.10"). Nothing about a message is an error: what is
/// missing fails its tests.
///
/// One object classifies any number of messages, one at a time; distinct objects
/// may work on distinct threads, as they share constant tables only. Time is
/// linear in the size of the message. Nothing is thrown but the failure of an
/// allocation.
///
/// The class is a shell: its members are the texts of one message, and each operation
/// hands them to a check of the classifier.
class BOUNCECHECK_EXPORT BounceCheck {
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
    // The steps of checkEmail, one by one. Each check returns a BounceType; 0 goes on.

    /// Fills all members from the message.
    void loadTransients(Email2& email, LogBase& log);
    /// Rebuilds `m_sbBounceData`.
    void getBounceData(Email2& email, LogBase& log);

    /// Runs the checks in order; the first verdict, or 0.
    int checkEmailInner(Email2& email, LogBase& log);

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
    int checkAVGMAIL(Email2& email, LogBase& log);

    int checkSpecialSubjects(Email2& email, LogBase& log);
    int checkSpecialCases1(Email2& email, LogBase& log);
    int checkSpecialCases2(Email2& email, LogBase& log);
    int checkSpecialCases3(Email2& email, LogBase& log);
    int checkSubjectList(Email2& email, LogBase& log);
    int checkFromAddrList(Email2& email, LogBase& log);

    /// Decides by the text of the message and finds the address in it. Begins
    /// with an empty `m_sbBounceAddr`.
    int checkEmailBody(Email2& email, LogBase& log);
    /// Whether `text`, the sender or the subject is that of an automatic reply.
    bool containsAutoReplyIndicator(Email2& email, StringBuffer& text, LogBase& log) const;

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
    using Check = int(const Evidence& evidence, Finding& finding, LogBase& log);
    BOUNCECHECK_HIDDEN int run(Email2& email, LogBase& log, Check& check);
    template <class Work>
    int withEvidence(Email2& email, Work work);
};

}  // namespace bouncecheck
