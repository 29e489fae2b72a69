// SPDX-License-Identifier: MIT
#include "actions/ActionWords.hpp"

#include "platform/foundation/NSByteCountFormatter.hpp"
#include "platform/foundation/NSLocalizedString.hpp"

#include <algorithm>
#include <limits>
#include <string_view>

namespace vantor {

using platform::NSLocalizedString;
using platform::textWithValue;

namespace {

std::string filled(std::string_view key, std::string_view name, const std::string& value) {
    return textWithValue(NSLocalizedString(key), name, value);
}

std::string filled(std::string_view key, std::string_view name, const std::string& value,
                   std::string_view secondName, const std::string& secondValue) {
    return textWithValue(filled(key, name, value), secondName, secondValue);
}

std::string_view keyOf(FreeUpRefusal refusal) {
    switch (refusal) {
    case FreeUpRefusal::none:
        return "action_FREEUPOFFER";
    case FreeUpRefusal::notTold:
        return "action_FREEUPNOTTOLD";
    case FreeUpRefusal::noGroups:
        return "action_FREEUPNOGROUPS";
    case FreeUpRefusal::noOwnGroups:
        return "action_FREEUPNOOWNGROUPS";
    case FreeUpRefusal::noSwap:
        return "action_FREEUPNOSWAP";
    case FreeUpRefusal::swapNearlyFull:
        return "action_FREEUPSWAPLOW";
    case FreeUpRefusal::enoughAvailable:
        return "action_FREEUPENOUGH";
    case FreeUpRefusal::nothingIdle:
        return "action_FREEUPNOTIDLE";
    case FreeUpRefusal::stopped:
        break;
    }
    return "action_STOPPED";
}

/// Empty where the work came to its end.
std::string_view keyOf(FreeUpEnd end) {
    switch (end) {
    case FreeUpEnd::finished:
        return "";
    case FreeUpEnd::compressesBadly:
        return "action_FREEUPBADLY";
    case FreeUpEnd::tookCache:
        return "action_FREEUPCACHE";
    case FreeUpEnd::underPressure:
        return "action_FREEUPPRESSURE";
    case FreeUpEnd::swapNearlyFull:
        return "action_FREEUPSWAPFULL";
    case FreeUpEnd::stopped:
        return "action_STOPPED";
    case FreeUpEnd::refused:
        break;
    }
    return "action_FREEUPREFUSED";
}

std::string_view keyOf(EndRefusal refusal) {
    switch (refusal) {
    case EndRefusal::none:
        return "action_ENDOFFER";
    case EndRefusal::isGone:
        return "action_ENDGONE";
    case EndRefusal::isOurs:
        return "action_ENDOURS";
    case EndRefusal::isSession:
        return "action_ENDSESSION";
    case EndRefusal::isSystem:
        return "action_ENDSYSTEM";
    case EndRefusal::isAnotherUsers:
        break;
    }
    return "action_ENDOTHERS";
}

std::string measured(std::uint64_t before, std::uint64_t after) {
    return filled("action_AVAILABLE", "before", memorySize(before), "after", memorySize(after));
}

} // namespace

std::string memorySize(std::uint64_t bytes) {
    constexpr auto most = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
    return platform::NSByteCountFormatter::stringFromByteCount(
        static_cast<std::int64_t>(std::min(bytes, most)), platform::NSByteCountFormatterCountStyle::memory);
}

std::string freeUpOffer(const FreeUpMemory& action) {
    const std::string text = filled(keyOf(action.refusal()), "size", memorySize(action.bytes()));
    const platform::MemoryLevel level = action.level().value_or(platform::MemoryLevel());
    return textWithValue(textWithValue(text, "available", memorySize(level.available)), "total",
                         memorySize(level.total));
}

std::string freeUpResult(const MemoryFreed& freed) {
    const std::string_view reason = keyOf(freed.end);
    std::string text = reason.empty() ? "" : NSLocalizedString(reason) + ' ';
    text += measured(freed.availableBefore, freed.availableAfter);
    return freed.moved > 0 ? text + ' ' + filled("action_FREEUPMOVED", "size", memorySize(freed.moved))
                           : text;
}

std::string endOffer(const EndApplication& action, const std::string& name) {
    return filled(keyOf(action.refusal()), "size", memorySize(action.comesBack()), "name", name);
}

std::string killOffer(const std::string& name) {
    return filled("action_KILLOFFER", "name", name);
}

std::string endResult(const EndingState& state, const std::string& name) {
    if (state.left > 0) {
        return filled("action_ENDRUNS", "name", name);
    }
    const std::string text = filled("action_ENDED", "name", name);
    return state.availableBefore && state.availableNow
               ? text + ' ' + measured(*state.availableBefore, *state.availableNow)
               : text;
}

} // namespace vantor
