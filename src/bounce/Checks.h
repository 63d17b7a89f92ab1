#pragma once

#include <bouncecheck/LogBase.h>
#include "bounce/Evidence.h"
#include "bounce/Finding.h"

/// The checks that decide what a message means. Each reads the evidence, fills the
/// finding and returns a BounceType; 0 leaves the message to the next one. What a check
/// puts into `Finding::address` stays there for those behind it.
namespace bouncecheck::checks {

/// Runs the checks in their order; the first verdict counts (Pipeline.cpp).
int inOrder(const Evidence& evidence, Finding& finding, LogBase& log);
/// Completes a verdict, 0 included: finds an address for one without, each kind in its own
/// way, and may find an automatic reply after all (Completion.cpp).
int complete(int type, const Evidence& evidence, Finding& finding, LogBase& log);
/// Makes an address bare: brackets, UTF-7 forms and one leading '@' go; storage paths are
/// no address.
void cleanAddress(StringBuffer& address);

// Reports.cpp

/// `mprNoBody` becomes true once the report's fields were read.
int multipartReport(const Evidence& evidence, Finding& finding, LogBase& log, bool& mprNoBody);
int feedbackReport(const Evidence& evidence, Finding& finding, LogBase& log);
/// Reports that a virus scanner wrapped in a multipart/mixed.
int avgMail(const Evidence& evidence, Finding& finding, LogBase& log);

// SpecialCases.cpp: fixed headers, subjects and phrases

int specialSubjects(const Evidence& evidence, Finding& finding, LogBase& log);
int specialCases1(const Evidence& evidence, Finding& finding, LogBase& log);
int specialCases2(const Evidence& evidence, Finding& finding, LogBase& log);
int specialCases3(const Evidence& evidence, Finding& finding, LogBase& log);

// PatternLists.cpp: subjects and senders worth a look at the text

int subjectList(const Evidence& evidence, Finding& finding, LogBase& log);
int fromAddrList(const Evidence& evidence, Finding& finding, LogBase& log);

// BodyClassification.cpp

/// Decides by the text of the message and finds the address in it. Begins without an
/// address.
int emailBody(const Evidence& evidence, Finding& finding, LogBase& log);

// AutoReply.cpp

/// What in a text of the message, its sender or its subject is that of an automatic reply.
AutoReplySign autoReplySign(const Evidence& evidence, const ScannedText& text, LogBase& log);

// LastResort.cpp

/// The bounce type of the first row of BounceRules that matches; else 0.
int lastResort(const Evidence& evidence, Finding& finding);

}  // namespace bouncecheck::checks
