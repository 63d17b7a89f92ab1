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

    /// Whether the bounce was sent to `address`.
    bool isAddressee(std::string_view address) const;
    /// Whether `text` names the domain of one of those; the first few are looked for.
    bool isDomainOfAddresseeIn(std::string_view text) const;
    /// Whether `address` is the bounce's sender, the address of a list, or that of a mail system.
    bool isOther(std::string_view address) const;

private:
    /// Each once, in any letter case. There are a few hundred at most.
    using Addresses = std::vector<std::string>;
    const Addresses& addressees() const;
    const Addresses& others() const;

    const MessageReading& reading_;
    From from_;
    mutable std::optional<Addresses> addressees_;
    mutable std::optional<Addresses> others_;
};

}  // namespace bouncecheck
