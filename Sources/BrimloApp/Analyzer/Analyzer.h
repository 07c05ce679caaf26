#pragma once

#include "BrimloApp/Shell/AppModel.h"
#include "BrimloCore/DiskScanner/FileNode.h"
#include "BrimloCore/DiskScanner/ScanControl.h"
#include "BrimloCore/DiskScanner/UnreadableFolders.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <QtQml/qqmlregistration.h>

#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {

class AreaRows;
class CrumbRows;
class NodeRows;
class PlanReview;

/// What fills a folder: the scanned tree and the way through it. Main thread.
class Analyzer : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("A part of the model")
    Q_MOC_INCLUDE("BrimloApp/Analyzer/AreaRows.h")
    Q_MOC_INCLUDE("BrimloApp/Analyzer/CrumbRows.h")
    Q_MOC_INCLUDE("BrimloApp/Analyzer/NodeRows.h")
    Q_MOC_INCLUDE("BrimloApp/Review/PlanReview.h")

    Q_PROPERTY(QString scanRoot READ scanRootText WRITE setScanRootText NOTIFY scanRootChanged)
    Q_PROPERTY(bool isScanning READ isScanning NOTIFY isScanningChanged)
    Q_PROPERTY(double scanFiles READ scanFiles NOTIFY progressChanged)
    Q_PROPERTY(double scanBytes READ scanBytes NOTIFY progressChanged)
    Q_PROPERTY(QString scanPath READ scanPath NOTIFY progressChanged)
    Q_PROPERTY(bool hasTree READ hasTree NOTIFY currentChanged)
    Q_PROPERTY(int unreadableCount READ unreadableCount NOTIFY unreadableChanged)
    Q_PROPERTY(int leftOutCount READ leftOutCount NOTIFY unreadableChanged)
    Q_PROPERTY(QString sortKey READ sortKey WRITE setSortKey NOTIFY orderChanged)
    Q_PROPERTY(bool ascending READ ascending WRITE setAscending NOTIFY orderChanged)
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

    /// Starts a scan of the folder chosen, or of another one, which then is the chosen one.
    Q_INVOKABLE void scan();
    void startScan(const std::string& path);
    Q_INVOKABLE void scanHome();
    Q_INVOKABLE void scanWholeDisk();
    /// Starts a scan of a dropped folder; false when the address is not one of a folder.
    Q_INVOKABLE bool scanDropped(const QUrl& address);
    Q_INVOKABLE void cancelScan();
    /// Scans the tree's folder once more, and opens the same folder in it, if that is one that this
    /// says.
    void findAgainIf(const std::function<bool(const std::string& folder)>& isMeant);

    [[nodiscard]] const std::string& scanRoot() const { return scanRoot_; }
    void setScanRoot(std::string path);
    [[nodiscard]] QString scanRootText() const;
    void setScanRootText(const QString& path);
    [[nodiscard]] bool isScanning() const { return isScanning_; }
    void setScanning(bool isScanning);

    /// How far the scan is.
    void show(ScanControl::Progress progress);
    [[nodiscard]] double scanFiles() const { return static_cast<double>(progress_.files); }
    [[nodiscard]] double scanBytes() const { return static_cast<double>(progress_.bytes); }
    [[nodiscard]] QString scanPath() const { return QString::fromStdString(progress_.path); }

    /// Shows another tree, from its top; null for none.
    void setTree(Node tree);
    /// The top of the last finished tree; null when there is none.
    [[nodiscard]] const Node& root() const { return root_; }
    [[nodiscard]] bool hasTree() const { return current_ != nullptr; }
    /// The folder that is shown.
    [[nodiscard]] const Node& current() const { return current_; }
    void setCurrent(Node folder);
    /// Shows the folder, if it has something in it.
    void drill(const Node& node);
    /// The children of the folder that is shown, in the order chosen. Sorts them at each call.
    [[nodiscard]] std::vector<Node> currentChildren() const;
    /// Takes nodes that went out of the tree, whichever scan they come from.
    void forget(const std::vector<Node>& nodes);

    /// What the last scan did not see.
    struct Unseen {
        int unreadableCount = 0;  ///< Folders.
        int leftOutCount = 0;     ///< Other volumes below the scanned folder.
        std::vector<UnreadableArea> areas;

        bool operator==(const Unseen&) const = default;
    };
    void show(Unseen unseen);
    [[nodiscard]] int unreadableCount() const { return unseen_.unreadableCount; }
    [[nodiscard]] int leftOutCount() const { return unseen_.leftOutCount; }
    [[nodiscard]] const std::vector<UnreadableArea>& unreadableAreas() const {
        return unseen_.areas;
    }

    [[nodiscard]] QString sortKey() const;
    void setSortKey(const QString& word);
    [[nodiscard]] bool ascending() const { return ascending_; }
    void setAscending(bool ascending);
    /// 0 shows the list, any other value the treemap.
    [[nodiscard]] int analyzerMode() const { return analyzerMode_; }
    void setAnalyzerMode(int mode);

    [[nodiscard]] NodeRows* rows() const { return rows_.get(); }
    [[nodiscard]] CrumbRows* crumbs() const { return crumbs_.get(); }
    [[nodiscard]] AreaRows* areas() const { return areas_.get(); }
    /// Of what is to be disposed of here.
    [[nodiscard]] PlanReview* review() const { return review_.get(); }

Q_SIGNALS:
    void scanRootChanged();
    void isScanningChanged();
    void progressChanged();
    void currentChanged();
    /// Nodes have left the tree.
    void nodesWent();
    void unreadableChanged();
    void orderChanged();
    void analyzerModeChanged();

private:
    void takeOut(const std::string& path);

    AppModel& app_;
    std::string scanRoot_;
    bool isScanning_ = false;
    bool scanAgain_ = false;  ///< Another scan is wanted after this one.
    std::string reopened_;    ///< The folder to open in the tree of the scan under way.
    std::set<std::string> wentMeanwhile_;  ///< Since the scan under way began.
    std::shared_ptr<ScanControl> scanControl_;
    std::unique_ptr<Clock::Pending> scanSampling_;
    ScanControl::Progress progress_;

    Node root_;
    Node current_;
    Unseen unseen_;
    FileNode::SortKey sortKey_ = FileNode::SortKey::size;
    bool ascending_ = false;
    int analyzerMode_ = 0;

    const std::unique_ptr<PlanReview> review_;
    const std::unique_ptr<NodeRows> rows_;
    const std::unique_ptr<CrumbRows> crumbs_;
    const std::unique_ptr<AreaRows> areas_;
};

}  // namespace Brimlo
