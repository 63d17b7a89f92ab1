#pragma once

#include "ledger/Entries.h"
#include "ledger/Ledger.h"
#include "ledger/Rules.h"

namespace bouncecheck::ledger {

/// The rules of a ledger.
Rules rulesOf(Ledger& ledger);

/// Makes `rules` those of the ledger from now on, and the states of addresses follow from them.
void changeRules(Ledger& ledger, const Rules& rules, Time now);

}  // namespace bouncecheck::ledger
