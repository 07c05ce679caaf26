#pragma once

#include "BrimloApp/Analyzer/AreaRows.h"
#include "BrimloApp/Analyzer/CrumbRows.h"
#include "BrimloApp/Analyzer/NodeRows.h"
#include "BrimloApp/Shell/AppModel.h"
#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/ScanRecords/Growth.h"
#include "BrimloCore/ScanRecords/ScanRecord.h"

#include <QtCore/QDateTime>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace Brimlo {

class PlanReview;

/// The Space Analyzer: a scan, its tree, and the current folder. Main thread; scans in the
/// background.
class Analyzer : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")
    Q_MOC_INCLUDE("BrimloApp/Review/PlanReview.h")

    Q_PROPERTY(QString scanRoot READ scanRootText WRITE setScanRootText NOTIFY scanRootChanged)
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY isScanningChanged)
    Q_PROPERTY(double scanFiles READ scanFiles NOTIFY progressChanged)
    Q_PROPERTY(double scanBytes READ scanBytes NOTIFY progressChanged)
    Q_PROPERTY(QString scanPath READ scanPath NOTIFY progressChanged)
    Q_PROPERTY(bool hasTree READ hasTree NOTIFY currentChanged)
    Q_PROPERTY(QDateTime since READ since NOTIFY currentChanged)
    Q_PROPERTY(QString grewMost READ grewMost NOTIFY currentChanged)
    Q_PROPERTY(int analyzerMode READ analyzerMode WRITE setAnalyzerMode NOTIFY analyzerModeChanged)

    Q_PROPERTY(Brimlo::NodeRows* rows READ rows CONSTANT)
    Q_PROPERTY(Brimlo::CrumbRows* crumbs READ crumbs CONSTANT)
    Q_PROPERTY(Brimlo::AreaRows* areas READ areas CONSTANT)
    Q_PROPERTY(Brimlo::PlanReview* review READ review CONSTANT)

public:
    using Node = std::shared_ptr<FileNode>;

    explicit Analyzer(AppModel& app);
    ~Analyzer() override;

    Q_DISABLE_COPY_MOVE(Analyzer)

    /// Start a scan of `scanRoot`, or set `scanRoot` first. Nothing happens during a scan.
    Q_INVOKABLE void scan();
    void startScan(const std::string& path);
    Q_INVOKABLE void scanHome();
    Q_INVOKABLE void scanWholeDisk();
    /// Starts a scan of a dropped folder; false if the address is not a folder's.
    Q_INVOKABLE bool scanDropped(const QUrl& address);
    Q_INVOKABLE void cancelScan();
    /// Scans the tree's folder again and reopens the current folder, if `isMeant` says so.
    void findAgainIf(const std::function<bool(const std::string& folder)>& isMeant);

    [[nodiscard]] const std::string& scanRoot() const { return scanRoot_; }
    void setScanRoot(std::string path);
    [[nodiscard]] QString scanRootText() const;
    void setScanRootText(const QString& path);
    [[nodiscard]] bool isScanning() const { return isScanning_; }
    void setScanning(bool isScanning);

    /// The progress of the scan.
    void show(ScanControl::Progress progress);
    [[nodiscard]] double scanFiles() const { return static_cast<double>(progress_.files); }
    [[nodiscard]] double scanBytes() const { return static_cast<double>(progress_.bytes); }
    [[nodiscard]] QString scanPath() const { return QString::fromStdString(progress_.path); }

    /// Replaces the tree and goes to its root; null for no tree.
    void setTree(Node tree);
    /// Compares the folders with an earlier scan of the same root; null for none.
    void compare(const std::optional<ScanRecord>& earlier, std::optional<Growth::Folder> grewMost);
    /// The time of that scan; invalid without one.
    [[nodiscard]] QDateTime since() const;
    /// A sentence about the folder that grew most since; empty when none surely grew.
    [[nodiscard]] QString grewMost() const;
    /// The bytes by which a folder is larger than it was then; nullopt where that scan did not list
    /// it.
    [[nodiscard]] std::optional<std::int64_t> growth(const FileNode& node) const;
    /// The root of the last finished scan, or null.
    [[nodiscard]] const Node& root() const { return root_; }
    [[nodiscard]] bool hasTree() const { return current_ != nullptr; }
    /// The current folder, or null.
    [[nodiscard]] const Node& current() const { return current_; }
    void setCurrent(Node folder);
    /// The entry of the current folder that holds the folder shown before; null unless the way led
    /// up.
    [[nodiscard]] const FileNode* cameFrom() const { return cameFrom_.get(); }
    /// Goes to a folder unless it is empty.
    void drill(const Node& node);
    /// Removes deleted nodes from the tree, whichever scan they come from.
    void forget(const std::vector<Node>& nodes);

    /// 0 for the list, any other value for the treemap.
    [[nodiscard]] int analyzerMode() const { return analyzerMode_; }
    void setAnalyzerMode(int mode);

    [[nodiscard]] NodeRows* rows() const { return rows_.get(); }
    [[nodiscard]] CrumbRows* crumbs() const { return crumbs_.get(); }
    [[nodiscard]] AreaRows* areas() const { return areas_.get(); }
    /// The review of what is to be moved to the Trash here.
    [[nodiscard]] PlanReview* review() const { return review_.get(); }

Q_SIGNALS:
    void scanRootChanged();
    void isScanningChanged();
    void progressChanged();
    void currentChanged();
    /// Nodes have left the tree.
    void nodesWent();
    void analyzerModeChanged();

private:
    AppModel& app_;
    std::string scanRoot_;
    bool isScanning_ = false;
    bool scanAgain_ = false;               ///< Whether to scan again afterwards.
    std::string reopened_;                 ///< The folder to reopen after the scan under way.
    std::set<std::string> wentMeanwhile_;  ///< Paths deleted since the scan began.
    std::shared_ptr<ScanControl> scanControl_;
    std::unique_ptr<Clock::Pending> scanSampling_;
    ScanControl::Progress progress_;

    Node root_;
    Node current_;
    Node cameFrom_;
    struct Earlier {
        std::chrono::sys_seconds time;
        std::unordered_map<std::string, std::int64_t> sizes;  ///< By path.
    };
    std::optional<Earlier> earlier_;
    std::optional<Growth::Folder> grewMost_;
    int analyzerMode_ = 0;

    const std::unique_ptr<PlanReview> review_;
    const std::unique_ptr<NodeRows> rows_;
    const std::unique_ptr<CrumbRows> crumbs_;
    const std::unique_ptr<AreaRows> areas_;
};

}  // namespace Brimlo
