#pragma once

#include "BrimloApp/Shell/AppModel.h"
#include "BrimloCore/DiskScanner/ScanControl.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace Brimlo {

/// A search for files below a folder, from its start to the list that it leaves. Main thread; what
/// is looked for, and how, is for the class that derives from this.
class FolderSearch : public QObject {
    Q_OBJECT
    QML_ANONYMOUS

    Q_PROPERTY(QString root READ rootText WRITE setRootText NOTIFY rootChanged)
    Q_PROPERTY(bool isSearching READ isSearching NOTIFY stateChanged)
    Q_PROPERTY(bool hasSearched READ hasSearched NOTIFY stateChanged)
    Q_PROPERTY(int unreadableCount READ unreadableCount NOTIFY stateChanged)

public:
    ~FolderSearch() override;

    Q_DISABLE_COPY_MOVE(FolderSearch)

    /// The folder that a dropped address names; nullopt when it names something else.
    [[nodiscard]] static std::optional<std::string> droppedFolder(const QUrl& address);

    Q_INVOKABLE void find();
    Q_INVOKABLE void findInHome();
    /// Starts a search of a dropped folder; false when the address is not one of a folder.
    Q_INVOKABLE bool findInDropped(const QUrl& address);
    /// Ends the search under way.
    Q_INVOKABLE void cancel();
    /// Searches once more if the folder of what is found, or being searched, is one that this says.
    void findAgainIf(const std::function<bool(const std::string& folder)>& isMeant);

    /// The folder to search. Stays as it is during a search: what that finds is of its folder.
    [[nodiscard]] const std::string& root() const { return root_; }
    void setRoot(std::string path);
    [[nodiscard]] QString rootText() const;
    void setRootText(const QString& path);

    struct State {
        bool isSearching = false;
        bool hasSearched = false;  ///< The list is of a search that nobody cancelled.
        int unreadableCount = 0;   ///< Folders that this search could not read.

        bool operator==(const State&) const = default;
    };
    void show(State state);
    [[nodiscard]] bool isSearching() const { return state_.isSearching; }
    [[nodiscard]] bool hasSearched() const { return state_.hasSearched; }
    [[nodiscard]] int unreadableCount() const { return state_.unreadableCount; }

Q_SIGNALS:
    void rootChanged();
    void stateChanged();

protected:
    explicit FolderSearch(AppModel& app);

    [[nodiscard]] AppModel& app() const { return app_; }

    /// Empties the list, and searches in the background; calls `end` when the list has what was
    /// found.
    virtual void start(std::shared_ptr<ScanControl> control) = 0;
    void end(const ScanControl& control);

private:
    AppModel& app_;
    std::string root_;
    State state_;
    bool again_ = false;  ///< Another search is wanted after this one.
    std::shared_ptr<ScanControl> control_;
};

}  // namespace Brimlo
