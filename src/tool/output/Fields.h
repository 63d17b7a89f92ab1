#pragma once

#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "tool/Classify.h"
#include "tool/RecipientFilter.h"
#include "tool/output/TerminalText.h"

namespace bouncecheck {

/// Which rows a message has in a table.
struct RowChoice {
    /// A row for each recipient rather than for each message.
    bool byRecipient = false;
    /// Which recipients have one.
    RecipientFilter filter;
    /// Leave out what is no address that mail goes to, and show each address once.
    bool onlyAddresses = false;
};

/// What a row is about: a message, and one of its recipients.
struct Shown {
    const Classified& message;
    /// Null where there is none.
    const Recipient* recipient = nullptr;
};

/// A column of a table, or a key of a flat object.
struct Field {
    std::string_view name;
    /// What it costs to know it.
    enum class Source { verdict, header, recipients, facts, data } source;
    /// Columns of a terminal that hold most values.
    std::size_t width;
    /// The value: part of the message, or of `scratch`, which it is made in when the message
    /// does not hold it as it is.
    std::string_view (*read)(const Shown& shown, std::string& scratch);
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

/// Of the recipients the one that the verdict is about: the one with its address, or else the
/// first that failed, or else the first; null when there is none.
const Recipient* mainRecipient(const Classified& message) noexcept;

/// The rows of one message after the other.
class Rows {
public:
    explicit Rows(const RowChoice& choice) : choice_(choice) {}

    bool areOfRecipients() const noexcept { return choice_.byRecipient; }

    /// Calls `show` for each row of `message`: one with its main recipient, or one for each
    /// recipient that is wanted.
    template <class Show>
    void of(const Classified& message, Show show) {
        if (!choice_.byRecipient) {
            show(Shown{message, mainRecipient(message)});
            return;
        }
        for (const Recipient& recipient : message.recipients) {
            if (choice_.filter.wants(recipient) && isShown(recipient)) {
                show(Shown{message, &recipient});
            }
        }
    }

private:
    bool isShown(const Recipient& recipient);

    RowChoice choice_;
    std::unordered_set<std::string> seen_;
};

}  // namespace bouncecheck
