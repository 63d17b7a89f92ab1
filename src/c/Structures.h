#pragma once

#include <string>
#include <string_view>

#include <bouncecheck/bouncecheck.h>
#include <bouncecheck/bouncecheck_c.h>

namespace bouncecheck {

/// The structures of C for values of C++, whose texts they refer to. Those of an empty value
/// refer to nothing.

bouncecheck_text textOf(const std::string& text) noexcept;
/// Of a literal, or of the end of one: a NUL stands behind it.
bouncecheck_text textOfLiteral(std::string_view literal) noexcept;

bouncecheck_verdict structureOf(const Verdict& verdict) noexcept;
/// Linear in the size of the text.
bouncecheck_evidence evidenceOf(const Verdict& verdict);
bouncecheck_recipient structureOf(const Recipient& recipient) noexcept;
bouncecheck_facts structureOf(const Facts& facts) noexcept;
bouncecheck_report_field structureOf(const ReportField& field) noexcept;

}  // namespace bouncecheck
