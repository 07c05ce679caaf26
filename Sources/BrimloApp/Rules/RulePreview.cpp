#include "BrimloApp/Rules/RulePreview.h"

#include "BrimloApp/Shell/RunInBackground.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"
#include "BrimloCore/UserRules/RuleValidation.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace Brimlo {

namespace {

constexpr std::chrono::milliseconds kWait{350};
constexpr std::size_t kShownPaths = 8;

QStringList lines(const std::vector<std::string>& from) {
    QStringList list;
    for (const std::string& line : from) {
        list.push_back(shown(line));
    }
    return list;
}

/// The error of an empty field. A rule with such an error can still be matched once it has a path.
bool isMissingWords(const std::string& error) {
    return error.starts_with("Give the rule") || error.starts_with("Describe");
}

bool isMissing(const std::string& error) {
    return isMissingWords(error) || error.starts_with("Add at least one path");
}

bool isFitToMatch(const RuleValidation& validation) {
    return std::ranges::all_of(validation.errors, isMissingWords);
}

}  // namespace

void RulePreview::setDraft(RuleDraft* draft) {
    if (draft_ == draft) {
        return;
    }
    disconnect(following_);
    draft_ = draft;
    missing_.clear();
    errors_.clear();
    warnings_.clear();
    Q_EMIT judged();
    clear();
    if (draft != nullptr) {
        following_ = connect(draft, &RuleDraft::changed, this, [this] { follow(); });
    }
    Q_EMIT draftChanged();
    follow();
}

void RulePreview::follow() {
    const bool canSave = draft_ && UserRules::validate(draft_->makeRule()).isValid();
    if (std::exchange(canSave_, canSave) != canSave) {
        Q_EMIT canSaveChanged();
    }
    waiting_ = draft_ ? clock_.schedule(kWait, Clock::Repeat::once, [this] { judge(); }) : nullptr;
}

void RulePreview::judge() {
    if (!draft_) {
        return;
    }
    CleanupRule rule = draft_->makeRule();
    RuleValidation found = UserRules::validate(rule);
    const bool isFit = isFitToMatch(found);
    const auto faults = std::ranges::stable_partition(found.errors, isMissing);
    missing_ = lines({found.errors.begin(), faults.begin()});
    errors_ = lines({faults.begin(), faults.end()});
    warnings_ = lines(found.warnings);
    Q_EMIT judged();
    if (isFit) {
        wanted_ = std::move(rule);
        match();
    } else {
        clear();
    }
}

void RulePreview::match() {
    if (!std::exchange(isWorking_, true)) {
        Q_EMIT isWorkingChanged();
    }
    // Only one at a time: a rule for a large folder takes seconds, and each keystroke would start
    // another.
    if (std::exchange(isMatching_, true)) {
        return;
    }
    runInBackground(
        this,
        [rule = *std::exchange(wanted_, std::nullopt)] { return SuggestionEngine::preview(rule); },
        [](RulePreview& preview, const std::vector<SuggestionItem>& items) {
            preview.isMatching_ = false;
            if (preview.wanted_) {
                preview.match();
            } else if (preview.isWorking_) {
                preview.show(items);
            }
        });
}

void RulePreview::show(const std::vector<SuggestionItem>& items) {
    isWorking_ = false;
    hasResult_ = true;
    itemCount_ = static_cast<int>(items.size());
    totalBytes_ = 0;
    paths_.clear();
    for (const SuggestionItem& item : items) {
        totalBytes_ += static_cast<double>(item.size);
        if (std::cmp_less(paths_.size(), kShownPaths)) {
            paths_.push_back(shown(UserRules::tildeForm(item.path)));
        }
    }
    Q_EMIT isWorkingChanged();
    Q_EMIT resultChanged();
}

void RulePreview::clear() {
    wanted_.reset();
    if (std::exchange(isWorking_, false)) {
        Q_EMIT isWorkingChanged();
    }
    if (std::exchange(hasResult_, false)) {
        itemCount_ = 0;
        totalBytes_ = 0;
        paths_.clear();
        Q_EMIT resultChanged();
    }
}

}  // namespace Brimlo
