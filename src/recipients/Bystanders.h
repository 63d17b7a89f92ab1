#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bouncecheck {

class HeaderFields;
class MessageReading;

/// Addresses that a bounce mentions for other reasons than that they failed. They are read when
/// the first address is compared with them.
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
    /// Whether it is the bounce's sender, the address of a list, or that of a mail system.
    bool isOther(std::string_view address) const;

private:
    /// Each once, in any letter case. There are a few hundred at most.
    struct Addresses {
        std::vector<std::string> addressees;
        std::vector<std::string> others;
    };
    const Addresses& known() const;
    static void addReturned(Addresses& known, const HeaderFields& header);

    const MessageReading& reading_;
    From from_;
    mutable std::optional<Addresses> known_;
};

}  // namespace bouncecheck
