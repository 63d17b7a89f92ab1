#include "bounce/BounceCheck.h"

// The checks that give no verdict yet. They hold their places in the pipeline,
// so that its order and its log are complete.
namespace bouncecheck {

int BounceCheck::checkSpecialCases1(Email2&, LogBase&) { return BOUNCE_NONE; }
int BounceCheck::checkSpecialSubjects(Email2&, LogBase&) { return BOUNCE_NONE; }
int BounceCheck::checkSubjectList(Email2&, LogBase&) { return BOUNCE_NONE; }
int BounceCheck::checkFromAddrList(Email2&, LogBase&) { return BOUNCE_NONE; }
int BounceCheck::checkSpecialCases2(Email2&, LogBase&) { return BOUNCE_NONE; }
int BounceCheck::checkSpecialCases3(Email2&, LogBase&) { return BOUNCE_NONE; }
int BounceCheck::checkEmailBody(Email2&, LogBase&) { return BOUNCE_NONE; }

}  // namespace bouncecheck
