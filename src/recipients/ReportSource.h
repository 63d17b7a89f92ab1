#pragma once

#include <string>
#include <string_view>

#include <bouncecheck/Recipient.h>
#include "recipients/MessageReading.h"
#include "recipients/RecipientList.h"

namespace bouncecheck {

/// Reads the recipients of a message's reports into a list: those of a delivery status
/// (RFC 3464), a complaint (RFC 5965) and a receipt (RFC 8098).
class ReportSource {
public:
    /// Of a message and a list that outlive it.
    ReportSource(const MessageReading& reading, RecipientList& list) noexcept
        : reading_(reading), list_(list) {}

    /// Reads the parts of the message that are reports.
    void read();
    /// Reads the fields of a delivery status that stand in `text`, which is decoded and has CRLF
    /// line ends.
    void addStatus(std::string_view text);

    /// Whether there was a delivery status with fields of a recipient, or a receipt.
    bool isFound() const noexcept { return isFound_; }
    bool isComplaint() const noexcept { return isComplaint_; }
    /// Whether the complaint says that the message is no spam, or that it failed authentication:
    /// no complaint of the recipient.
    bool isWithdrawn() const noexcept { return isWithdrawn_; }

private:
    void addComplaint(std::string_view text);
    void addForwarded();
    void addComplainer(const std::string& address, RecipientSource source);
    void addReceipt(std::string_view text);

    const MessageReading& reading_;
    RecipientList& list_;
    bool isFound_ = false;
    bool isComplaint_ = false;
    bool isWithdrawn_ = false;
};

}  // namespace bouncecheck
