#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bouncecheck {

class HeaderFields;
class MessageReading;

/// Addresses that a bounce mentions for other reasons than that they failed. They are read when
/// an address is compared with them first.
class Bystanders {
public:
    enum class From {
        /// Those of its header: to whom it was sent, and who sent it.
        message,
        /// And those of the message that came back: who sent that, and the addresses of its list.
        messageAndReturned,
    };

    /// Those of a bounce that outlives them.
    Bystanders(const MessageReading& reading, From from) noexcept
        : reading_(reading), from_(from) {}

    /// Whether `address` is that of who sent the original mail: to whom the bounce was sent, or
    /// who sent what came back.
    bool isOfSender(std::string_view address) const;
    /// Whether `text` names the domain of one of those; the first few are looked for.
    bool isDomainOfSenderIn(std::string_view text) const;
    /// Whether `address` is the bounce's sender, the address of a list, or that of a mail system.
    bool isSystemOrList(std::string_view address) const;

private:
    /// Each once, in any letter case. There are a few hundred at most.
    using Addresses = std::vector<std::string>;
    const Addresses& ofSender() const;
    const Addresses& ofSystemsAndLists() const;

    const MessageReading& reading_;
    From from_;
    mutable std::optional<Addresses> ofSender_;
    mutable std::optional<Addresses> ofSystemsAndLists_;
};

}  // namespace bouncecheck
