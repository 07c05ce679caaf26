#pragma once

#include "BrimloCore/Models/CleanupRule.h"
#include "BrimloCore/Support/Uuid.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtQml/qqmlregistration.h>

#include <memory>
#include <optional>
#include <string>

namespace Brimlo {

/// The fields of the rule editor. Main thread.
class RuleDraft : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The model opens drafts")

    Q_PROPERTY(bool isNew READ isNew CONSTANT)
    Q_PROPERTY(QString name MEMBER name_ NOTIFY changed)
    Q_PROPERTY(QString group MEMBER group_ NOTIFY changed)
    Q_PROPERTY(QStringList paths MEMBER paths_ NOTIFY changed)
    Q_PROPERTY(QString risk READ risk WRITE setRisk NOTIFY changed)
    Q_PROPERTY(QString regenerates MEMBER regenerates_ NOTIFY changed)
    Q_PROPERTY(QString quitApps MEMBER quitApps_ NOTIFY changed)
    Q_PROPERTY(bool contentsOnly MEMBER contentsOnly_ NOTIFY changed)
    Q_PROPERTY(bool useMinAge MEMBER useMinAge_ NOTIFY changed)
    Q_PROPERTY(int minAgeDays MEMBER minAgeDays_ NOTIFY changed)
    Q_PROPERTY(QString excludes MEMBER excludes_ NOTIFY changed)
    Q_PROPERTY(QString command MEMBER command_ NOTIFY changed)
    Q_PROPERTY(QString saveFailure MEMBER saveFailure_ NOTIFY saveFailureChanged)

public:
    /// An empty draft of a new rule.
    RuleDraft() = default;
    /// A draft of an existing rule.
    explicit RuleDraft(const CleanupRule& rule);
    /// A draft of a new rule that begins like another.
    [[nodiscard]] static std::unique_ptr<RuleDraft> copyOf(const CleanupRule& rule);
    /// A draft of a new rule for one path.
    RuleDraft(const std::string& path, const std::string& name);

    /// The rule to save. A new one gets another id at each call.
    [[nodiscard]] CleanupRule makeRule() const;

    [[nodiscard]] bool isNew() const { return !ruleID_; }
    [[nodiscard]] QString risk() const;
    void setRisk(const QString& word);

    /// The rows of paths.
    Q_INVOKABLE void addPath();
    Q_INVOKABLE void removePath(int row);
    Q_INVOKABLE void setPath(int row, const QString& text);
    /// Stores a path from a folder dialog, in tilde form.
    Q_INVOKABLE void choosePath(int row, const QString& path);
    /// Fills in `regenerates` with a text that fits the rating.
    Q_INVOKABLE void useSuggestedWording();

    const Uuid id = Uuid::random();

Q_SIGNALS:
    /// Any field changed.
    void changed();
    void saveFailureChanged();

private:
    std::optional<std::string> ruleID_;
    QString name_;
    QString group_;
    QStringList paths_{QString{}};
    Risk risk_ = Risk::review;
    QString regenerates_;
    QString quitApps_;  ///< Separated by commas.
    bool contentsOnly_ = false;
    bool useMinAge_ = false;
    int minAgeDays_ = 30;
    QString excludes_;  ///< Separated by commas.
    QString command_;
    MatchConditions conditions_;  ///< Not in the editor: kept as the rule's file has them.
    QString saveFailure_;         ///< Why the last attempt to save failed.
};

}  // namespace Brimlo
