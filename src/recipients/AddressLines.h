#pragma once

#include <string_view>
#include <utility>

namespace bouncecheck {

/// Lines of a notice that follow each other and have only addresses: a list of recipients, whose
/// heading is that of them all.
class AddressLines {
public:
    /// Goes on to the next line that is not blank.
    void nextLine() noexcept { wasOpen_ = std::exchange(isOpen_, false); }
    /// Takes the line; true where it is the first.
    bool take() noexcept {
        isOpen_ = true;
        return !wasOpen_;
    }
    /// Notes what stands in front of the first: a `heading` that says why mail failed, or "";
    /// `isLone` where nothing announces recipients.
    void setHeading(std::string_view heading, bool isLone) noexcept {
        heading_ = heading;
        isLone_ = isLone;
    }

    std::string_view heading() const noexcept { return heading_; }
    /// Whether nothing announces them, so that they may be a signature.
    bool areLone() const noexcept { return isLone_; }

private:
    bool isOpen_ = false;
    bool wasOpen_ = false;
    bool isLone_ = false;
    std::string_view heading_;
};

}  // namespace bouncecheck
