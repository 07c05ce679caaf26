#include "BrimloApp/Shell/Banner.h"

#include "BrimloApp/Shell/Shown.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

namespace Brimlo {

namespace {

using namespace std::chrono_literals;

constexpr auto kUsualTime = 8s;
constexpr auto kLongTime = 20s;

/// A message's text is the only sign that something failed.
bool tellsOfFailure(const QString& text) {
    constexpr std::array kWords{"failed", "could not", "unable"};
    const QString lowered = text.toLower();
    return std::ranges::any_of(kWords, [&](const char* word) { return lowered.contains(word); });
}

}  // namespace

void Banner::put(const Message& message) {
    assign(*this, message_, message, &Banner::changed);
    // Showing the same text again restarts its time.
    end_.reset();
    if (message.text.isEmpty()) {
        return;
    }
    const bool needsTime = message.offersUndo || tellsOfFailure(message.text);
    const auto time = needsTime ? kLongTime : kUsualTime;
    end_ = clock_.schedule(time, Clock::Repeat::once, [this, was = message] {
        if (message_ == was) {
            assign(*this, message_, Message{}, &Banner::changed);
        }
    });
}

void Banner::offerUndo(const QString& text, std::function<void()> takeBack) {
    takeBack_ = std::move(takeBack);
    put(Message{.text = text, .offersUndo = true, .undoesChange = true});
}

void Banner::takeBack() {
    put(Message{});
    std::exchange(takeBack_, {})();
}

}  // namespace Brimlo
