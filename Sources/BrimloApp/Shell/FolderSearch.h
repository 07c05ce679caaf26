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
#include <vector>

namespace Brimlo {

/// A search for files below a folder, from its start to its result. A derived class decides what to
/// look for. Main thread.
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

    /// The folder of a dropped address; nullopt if it is not a folder.
    [[nodiscard]] static std::optional<std::string> droppedFolder(const QUrl& address);

    Q_INVOKABLE void find();
    Q_INVOKABLE void findInHome();
    /// Starts a search of a dropped folder; false if the address is not a folder's.
    Q_INVOKABLE bool findInDropped(const QUrl& address);
    /// Cancels the search under way.
    Q_INVOKABLE void cancel();
    /// Searches again if `isMeant` says so about a folder searched.
    void findAgainIf(const std::function<bool(const std::string& folder)>& isMeant);

    /// The folder to search. Can't be changed during a search.
    [[nodiscard]] const std::string& root() const { return root_; }
    void setRoot(std::string path);
    [[nodiscard]] QString rootText() const;
    void setRootText(const QString& path);

    struct State {
        bool isSearching = false;
        bool hasSearched =
            false;  ///< Whether the list is the result of a search that was not cancelled.
        int unreadableCount = 0;  ///< Folders that this search could not read.

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

    /// All folders that are searched.
    [[nodiscard]] virtual std::vector<std::string> folders() const { return {root_}; }
    /// Clears the list and searches in the background; calls `end` when the list holds the result.
    virtual void start(std::shared_ptr<ScanControl> control) = 0;
    void end(const ScanControl& control);

private:
    AppModel& app_;
    std::string root_;
    State state_;
    bool again_ = false;  ///< Whether to search again afterwards.
    std::shared_ptr<ScanControl> control_;
};

}  // namespace Brimlo
