#pragma once

#include "BrimloApp/Rules/RuleDraft.h"
#include "BrimloApp/Shell/Clock.h"
#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Models/Suggestion.h"

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QStringList>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>
#include <vector>

namespace Brimlo {

/// The errors, warnings and current matches of a rule while it is edited. Follows the draft, 0.35
/// seconds after the last change. Main thread; the matching runs in the background, one at a time,
/// and only the latest result is shown.
class RulePreview : public QObject {
    Q_OBJECT
    QML_ELEMENT

    Q_PROPERTY(Brimlo::RuleDraft* draft READ draft WRITE setDraft NOTIFY draftChanged)
    /// Errors about empty fields.
    Q_PROPERTY(QStringList missing READ missing NOTIFY judged)
    /// All other errors.
    Q_PROPERTY(QStringList errors READ errors NOTIFY judged)
    Q_PROPERTY(QStringList warnings READ warnings NOTIFY judged)
    /// Whether the rule is valid. Always up to date, unlike everything else.
    Q_PROPERTY(bool canSave READ canSave NOTIFY canSaveChanged)
    Q_PROPERTY(bool isWorking READ isWorking NOTIFY isWorkingChanged)

    /// Whether there is a result: none without paths, or with a forbidden path.
    Q_PROPERTY(bool hasResult READ hasResult NOTIFY resultChanged)
    Q_PROPERTY(int itemCount READ itemCount NOTIFY resultChanged)
    Q_PROPERTY(double totalBytes READ totalBytes NOTIFY resultChanged)
    /// The largest items in tilde form, and the number of the others.
    Q_PROPERTY(QStringList paths READ paths NOTIFY resultChanged)
    Q_PROPERTY(int moreCount READ moreCount NOTIFY resultChanged)

public:
    explicit RulePreview(QObject* parent = nullptr)
        : RulePreview{Clock::system(), parent} {}
    explicit RulePreview(Clock& clock, QObject* parent = nullptr)
        : QObject{parent}
        , clock_{clock} {}

    [[nodiscard]] RuleDraft* draft() const { return draft_; }
    void setDraft(RuleDraft* draft);

    [[nodiscard]] const QStringList& missing() const { return missing_; }
    [[nodiscard]] const QStringList& errors() const { return errors_; }
    [[nodiscard]] const QStringList& warnings() const { return warnings_; }
    [[nodiscard]] bool canSave() const { return canSave_; }
    [[nodiscard]] bool isWorking() const { return isWorking_; }
    [[nodiscard]] bool hasResult() const { return hasResult_; }
    [[nodiscard]] int itemCount() const { return itemCount_; }
    [[nodiscard]] double totalBytes() const { return totalBytes_; }
    [[nodiscard]] const QStringList& paths() const { return paths_; }
    [[nodiscard]] int moreCount() const { return itemCount_ - static_cast<int>(paths_.size()); }

Q_SIGNALS:
    void draftChanged();
    void judged();
    void canSaveChanged();
    void isWorkingChanged();
    void resultChanged();

private:
    void follow();
    void judge();
    void match();
    void show(const std::vector<SuggestionItem>& items);
    void clear();

    Clock& clock_;
    QPointer<RuleDraft> draft_;
    QMetaObject::Connection following_;
    std::unique_ptr<Clock::Pending> waiting_;

    QStringList missing_;
    QStringList errors_;
    QStringList warnings_;
    bool canSave_ = false;

    std::optional<CleanupRule>
        wanted_;               ///< The rule to match; nullopt unless the draft can be matched.
    bool isMatching_ = false;  ///< Whether a matching is running.
    bool isWorking_ = false;   ///< Whether a result is expected.
    bool hasResult_ = false;
    int itemCount_ = 0;
    double totalBytes_ = 0;
    QStringList paths_;
};

}  // namespace Brimlo
