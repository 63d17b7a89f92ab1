#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tool/Classify.h"
#include "tool/output/TerminalText.h"

namespace bouncecheck {

/// A column of a table, or a key of a flat object.
struct Field {
    std::string_view name;
    /// What it costs to know it.
    enum class Source { verdict, header, facts, data } source;
    /// Columns of a terminal that hold most values.
    std::size_t width;
    std::string (*read)(const Classified& message);
    bool isNumber = false;
    /// The end that may go where there is no room.
    Cut cut = Cut::end;
};

std::span<const Field> allFields() noexcept;

/// The fields of a list such as "name,address". Throws std::invalid_argument, with
/// all names, when one is none.
std::vector<const Field*> parseFields(std::string_view names);

/// Adds to `wanted` what reading `fields` takes.
void addWanted(std::span<const Field* const> fields, Wanted& wanted);

/// Of the recipients of a report the one that the verdict is about: the one with
/// its address, or else the first that failed, or else the first; null when there
/// is none.
const RecipientFacts* mainRecipient(const Classified& message) noexcept;

}  // namespace bouncecheck
