#pragma once

#include <bouncecheck/bouncecheck.h>

#include <span>

#include "tool/output/JsonText.h"

namespace bouncecheck {

/// Adds what was found out about a message to an object: the members of
/// docs/result.schema.json but where it was read and what is told only when it was asked for.
void addFindings(JsonText& json, const Verdict& verdict, std::span<const Recipient> recipients,
                 const Facts& facts);

/// Adds the member with the steps to the verdict.
void addTrace(JsonText& json, std::span<const LogTrace::Event> events);

}  // namespace bouncecheck
