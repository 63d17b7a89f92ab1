#pragma once

namespace bouncecheck {

/// Lets one allocation of this program fail by std::bad_alloc, the one behind `number`
/// others, and all behind it when it `lasts`.
void failAllocation(long number, bool lasts = false) noexcept;

/// Ends that. Whether no allocation has failed.
bool takeBackFailure() noexcept;

/// How many allocations this program has made or tried.
long allocationCount() noexcept;

}  // namespace bouncecheck
