#pragma once

#include <string_view>

namespace bouncecheck {

/// A phrase of ReplyPhrases.h that holds one of these speaks of a failure that will pass.
inline constexpr std::string_view temporaryWords[] = {
    "temporar",
    "try again later",
    "try again in",
    "try later",
    "maintenance",
    "lookup failure",
    "servfail",
    "timed out",
    "deferred",
    // the same in other languages
    "temporaire",
    "temporal",
    "temporanea",
    "temporaneo",
    "provvisori",
    "vorubergehend",
    "voruebergehend",
    "tijdelijk",
    "tymczasow",
    "docasne ",
    "временн",
    "тимчасов",
    "midlertidig",
    "tillfallig",
    "valiaikais",
    "ideiglenes",
    "暂时无法",
    "暫時無法",
    "一時的",
    "일시적",
    "mantenimiento",
    "manutencao",
    "manutenzione",
    "wartungsarbeiten",
    "en este momento",
    "neste momento",
    "in questo momento",
    "稍后再试",
    "稍後再試",
    "tilapais",
    "atmeneti",
    "gecici",
    "προσωριν",
    "tạm thời",
    "chwilowo",
    "暂时",
    "暫時",
    "i ojeblikket",
    "for tillfallet",
    "momentalne",
};

}  // namespace bouncecheck
