#pragma once

#include <string>
#include <string_view>
#include <unordered_set>

namespace bouncecheck {

class Entity;
class HeaderFields;

/// Addresses that a bounce mentions for other reasons than that they failed.
class Bystanders {
public:
    /// Those of the header of `message`: to whom it was sent, and who sent it.
    explicit Bystanders(const Entity& message);

    /// Adds those of the message that came back: who sent it, and the addresses of its list.
    void addReturned(const HeaderFields& header);

    /// Whether the bounce was sent to `address`.
    bool isAddressee(std::string_view address) const;
    /// Whether it is the bounce's sender, the address of a list, or that of a mail system.
    bool isOther(std::string_view address) const;

private:
    std::unordered_set<std::string> addressees_;
    std::unordered_set<std::string> others_;
    std::string senderDomain_;
};

}  // namespace bouncecheck
