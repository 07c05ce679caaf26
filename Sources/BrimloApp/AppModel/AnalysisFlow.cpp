#include "BrimloApp/AppModel/AppModel.h"
#include "BrimloApp/AppModel/RunInBackground.h"
#include "BrimloCore/Cleaner/DuplicateExtras.h"
#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/LargeFiles/LargeFiles.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

#include <algorithm>
#include <utility>

// What fills a folder: the scanned tree and the way through it, the largest files, the duplicates.

namespace Brimlo {
namespace {

using namespace std::chrono_literals;

constexpr auto kSamplingTime = 150ms;
constexpr std::size_t kLargeFileLimit = 200;
constexpr std::int64_t kLargeFileSize = 52'428'800;
constexpr std::int64_t kDuplicateSize = 1'048'576;

/// The folder that was dropped; nullopt when it was something else.
std::optional<std::string> droppedFolder(const QUrl& address) {
    const QString path = address.toLocalFile();
    return QFileInfo{path}.isDir() ? std::optional{QFile::encodeName(path).toStdString()}
                                   : std::nullopt;
}

/// The node of a path in the tree below `top`; null when there is none.
std::shared_ptr<FileNode> nodeOf(const std::string_view path, std::shared_ptr<FileNode> top) {
    const auto leadsThere = [&](const std::shared_ptr<FileNode>& child) {
        return !child->isAggregate && Path::below(child->path, path);
    };
    while (top && top->path != path) {
        std::shared_ptr<FileNode> next;
        if (top->children) {
            const auto found = std::ranges::find_if(*top->children, leadsThere);
            next = found == top->children->end() ? nullptr : *found;
        }
        top = std::move(next);
    }
    return top;
}

/// Whether the node is `root` or lies in its tree.
bool isInTree(const FileNode* node, const FileNode* root) {
    while (node != nullptr && node != root) {
        node = node->parent.lock().get();
    }
    return node != nullptr;
}

}  // namespace

// ---- The tree ------------------------------------------------------------------------------

void AppModel::startScan(const std::optional<std::string>& path) {
    if (isScanning_) {
        return;
    }
    if (path) {
        setScanRoot(*path);
    }
    scanControl_ = std::make_shared<ScanControl>();
    assign(isScanning_, true, &AppModel::isScanningChanged);
    takeTree(nullptr);
    assign(scanFiles_, std::int64_t{0}, &AppModel::scanFilesChanged);
    assign(scanBytes_, std::int64_t{0}, &AppModel::scanBytesChanged);
    assign(leftOutCount_, 0, &AppModel::unreadableCountChanged);
    assign(unreadableCount_, 0, &AppModel::unreadableCountChanged);
    scanSampling_ = clock_.schedule(kSamplingTime, Clock::Repeat::always, [this] { sampleScan(); });

    struct Scanned {
        std::shared_ptr<FileNode> root;
        int unreadableCount = 0;
        int leftOutCount = 0;
        std::vector<UnreadableArea> unreadableAreas;
    };
    runInBackground(
        this,
        [control = scanControl_, root = scanRoot_] {
            Scanned scanned{
                .root = DiskScanner{control, ScanOptions{}}
                  .scan(root)
            };
            scanned.unreadableCount = static_cast<int>(control->inaccessible().size());
            scanned.leftOutCount = static_cast<int>(control->otherVolumes().size());
            scanned.unreadableAreas = UnreadableFolders::group(*control, StoragePaths::home());
            return scanned;
        },
        [control = scanControl_](AppModel& model, Scanned scanned) {
            model.scanSampling_.reset();
            model.sampleScan();
            model.assign(model.isScanning_, false, &AppModel::isScanningChanged);
            if (control->isCancelled()) {
                releaseInBackground(std::move(scanned.root));
            } else {
                model.takeTree(std::move(scanned.root));
                for (const std::string& gone : model.wentMeanwhile_) {
                    model.takeOutOfTree(gone);
                }
                if (auto folder = nodeOf(model.reopened_, model.root_)) {
                    model.setCurrent(std::move(folder));
                }
            }
            model.reopened_.clear();
            model.forgetWhatWent();
            model.assign(
                model.leftOutCount_, scanned.leftOutCount, &AppModel::unreadableCountChanged);
            model.assign(
                model.unreadableCount_, scanned.unreadableCount, &AppModel::unreadableCountChanged);
            model.assign(
                model.unreadableAreas_,
                std::move(scanned.unreadableAreas),
                &AppModel::unreadableAreasChanged);
            model.refreshVolume();
            if (std::exchange(model.scanAgain_, false) && !control->isCancelled()) {
                model.startScan();
            }
        });
}

void AppModel::scanAnew() {
    scanAgain_ = isScanning_;
    if (!isScanning_) {
        std::string opened = current_->path;
        startScan(root_->path);
        reopened_ = std::move(opened);
    }
}

void AppModel::sampleScan() {
    ScanControl::Progress progress = scanControl_->progress();
    assign(scanFiles_, progress.files, &AppModel::scanFilesChanged);
    assign(scanBytes_, progress.bytes, &AppModel::scanBytesChanged);
    assign(scanPath_, QString::fromStdString(progress.path), &AppModel::scanPathChanged);
}

void AppModel::takeTree(std::shared_ptr<FileNode> tree) {
    std::shared_ptr<FileNode> old = root_;
    assign(root_, tree, &AppModel::rootChanged);
    setCurrent(std::move(tree));
    // A tree of a disk has hundreds of thousands of nodes, too many to be let go on this thread.
    releaseInBackground(std::move(old));
}

void AppModel::scanHome() {
    startScan(StoragePaths::home());
}

void AppModel::scanWholeDisk() {
    startScan("/");
}

bool AppModel::scanDropped(const QUrl& address) {
    const auto folder = droppedFolder(address);
    if (folder) {
        startScan(folder);
    }
    return folder.has_value();
}

void AppModel::cancelScan() {
    if (scanControl_) {
        scanControl_->cancel();
    }
}

void AppModel::setScanRoot(std::string path) {
    assign(scanRoot_, std::move(path), &AppModel::scanRootChanged);
}

QString AppModel::scanRootText() const {
    return QFile::decodeName(QByteArray::fromStdString(scanRoot_));
}

void AppModel::setScanRootText(const QString& path) {
    setScanRoot(QFile::encodeName(path).toStdString());
}

void AppModel::setCurrent(std::shared_ptr<FileNode> folder) {
    assign(current_, std::move(folder), &AppModel::currentChanged);
}

std::vector<std::shared_ptr<FileNode>> AppModel::currentChildren() const {
    if (!current_) {
        return {};
    }
    return current_->sortedChildren(
        sortKey_, ascending_ ? FileNode::SortOrder::ascending : FileNode::SortOrder::descending);
}

void AppModel::drill(const std::shared_ptr<FileNode>& node) {
    if (node->isDirectory && node->children && !node->children->empty()) {
        setCurrent(node);
    }
}

void AppModel::setSortKey(const FileNode::SortKey key) {
    assign(sortKey_, key, &AppModel::sortKeyChanged);
}

QString AppModel::sortKeyID() const {
    return QString::fromUtf8(FileNode::rawValue(sortKey_));
}

void AppModel::setSortKeyID(const QString& id) {
    if (const auto key = FileNode::sortKeyFromRawValue(id.toStdString())) {
        setSortKey(*key);
    }
}

void AppModel::setAscending(const bool ascending) {
    assign(ascending_, ascending, &AppModel::ascendingChanged);
}

void AppModel::setPreviewRequested(const bool requested) {
    assign(previewRequested_, requested, &AppModel::previewRequestedChanged);
}

void AppModel::setAnalyzerMode(const int mode) {
    assign(analyzerMode_, mode, &AppModel::analyzerModeChanged);
}

CleanPlan AppModel::planFor(const std::vector<std::shared_ptr<FileNode>>& nodes) {
    std::vector<CleanItem> items;
    for (const auto& node : nodes) {
        if (!node->isAggregate) {
            items.push_back({.path = node->path, .size = node->size, .ruleID = {}, .risk = {}});
        }
    }
    return CleanPlan{items};
}

void AppModel::dispose(
    const std::vector<std::shared_ptr<FileNode>>& nodes, const DisposalMode mode) {
    CleanPlan plan = planFor(nodes);
    if (plan.items().empty()) {
        return;
    }
    runClean(plan, mode, [model = QPointer{this}, nodes] {
        if (model) {
            model->removeDisposed(nodes);
        }
    });
}

void AppModel::removeDisposed(const std::vector<std::shared_ptr<FileNode>>& nodes) {
    const std::set<std::string> stayed = lastReport_.value_or(CleanReport{}).stayed();
    std::set<std::string> went;
    for (const auto& node : nodes) {
        if (stayed.contains(node->path)) {
            continue;
        }
        went.insert(node->path);
        if (isInTree(node.get(), root_.get())) {
            node->remove();
        } else {
            takeOutOfTree(node->path);
        }
    }
    takeOutOfLargeFiles(went);
    if (isScanning_ || isFindingLarge_) {
        wentMeanwhile_.merge(went);
    }
    if (current_ && !isInTree(current_.get(), root_.get())) {
        setCurrent(root_);
    }
    assign(treeVersion_, treeVersion_ + 1, &AppModel::treeVersionChanged);
}

void AppModel::takeOutOfTree(const std::string& path) {
    if (const auto node = nodeOf(path, root_)) {
        node->remove();
    }
}

void AppModel::forgetWhatWent() {
    if (!isScanning_ && !isFindingLarge_) {
        wentMeanwhile_.clear();
    }
}

// ---- Large files ---------------------------------------------------------------------------

void AppModel::findLargeFiles() {
    if (isFindingLarge_) {
        return;
    }
    assign(isFindingLarge_, true, &AppModel::isFindingLargeChanged);
    assign(largeFiles_, {}, &AppModel::largeFilesChanged);
    assign(largeSearched_, false, &AppModel::largeSearchedChanged);
    largeControl_ = std::make_shared<ScanControl>();
    runInBackground(
        this,
        [root = largeRoot_, control = largeControl_] {
            return LargeFiles::find(root, kLargeFileLimit, kLargeFileSize, *control);
        },
        [control = largeControl_](AppModel& model, std::vector<std::shared_ptr<FileNode>> found) {
            model.assign(model.largeFiles_, std::move(found), &AppModel::largeFilesChanged);
            model.takeOutOfLargeFiles(model.wentMeanwhile_);
            model.assign(model.isFindingLarge_, false, &AppModel::isFindingLargeChanged);
            model.forgetWhatWent();
            model.largeUnreadable_ = static_cast<int>(control->inaccessible().size());
            model.assign(
                model.largeSearched_, !control->isCancelled(), &AppModel::largeSearchedChanged);
            if (std::exchange(model.findLargeAgain_, false) && !control->isCancelled()) {
                model.findLargeFiles();
            }
        });
}

void AppModel::findLargeFilesAnew() {
    findLargeAgain_ = isFindingLarge_;
    findLargeFiles();
}

void AppModel::findLargeFilesInHome() {
    setLargeRoot(StoragePaths::home());
    findLargeFiles();
}

bool AppModel::findLargeFilesInDropped(const QUrl& address) {
    const auto folder = droppedFolder(address);
    if (folder) {
        setLargeRoot(*folder);
        findLargeFiles();
    }
    return folder.has_value();
}

void AppModel::cancelLargeFiles() {
    if (largeControl_) {
        largeControl_->cancel();
    }
}

void AppModel::trashLargeFile(const std::shared_ptr<FileNode>& node) {
    dispose({node}, DisposalMode::trash);
}

void AppModel::takeOutOfLargeFiles(const std::set<std::string>& paths) {
    auto left = largeFiles_;
    std::erase_if(left, [&](const auto& each) { return paths.contains(each->path); });
    assign(largeFiles_, std::move(left), &AppModel::largeFilesChanged);
}

void AppModel::setLargeRoot(std::string path) {
    // What a search finds is of the folder in which it began.
    if (isFindingLarge_) {
        return;
    }
    assign(largeRoot_, std::move(path), &AppModel::largeRootChanged);
}

QString AppModel::largeRootText() const {
    return QFile::decodeName(QByteArray::fromStdString(largeRoot_));
}

void AppModel::setLargeRootText(const QString& path) {
    setLargeRoot(QFile::encodeName(path).toStdString());
}

// ---- Duplicates ----------------------------------------------------------------------------

void AppModel::findDuplicates() {
    if (isFindingDupes_) {
        return;
    }
    assign(isFindingDupes_, true, &AppModel::isFindingDupesChanged);
    assign(dupGroups_, {}, &AppModel::dupGroupsChanged);
    assign(dupsSearched_, false, &AppModel::dupsSearchedChanged);
    dupControl_ = std::make_shared<ScanControl>();
    runInBackground(
        this,
        [root = dupRoot_, control = dupControl_] {
            return DuplicateFinder::find({root}, kDuplicateSize, control.get());
        },
        [control = dupControl_](AppModel& model, std::vector<DuplicateGroup> found) {
            model.assign(model.dupGroups_, std::move(found), &AppModel::dupGroupsChanged);
            model.assign(model.isFindingDupes_, false, &AppModel::isFindingDupesChanged);
            model.dupsUnreadable_ = static_cast<int>(control->inaccessible().size());
            model.assign(
                model.dupsSearched_, !control->isCancelled(), &AppModel::dupsSearchedChanged);
            if (std::exchange(model.findDupesAgain_, false) && !control->isCancelled()) {
                model.findDuplicates();
            }
        });
}

void AppModel::findDuplicatesAnew() {
    findDupesAgain_ = isFindingDupes_;
    findDuplicates();
}

void AppModel::findDuplicatesInHome() {
    setDupRoot(StoragePaths::home());
    findDuplicates();
}

bool AppModel::findDuplicatesInDropped(const QUrl& address) {
    const auto folder = droppedFolder(address);
    if (folder) {
        setDupRoot(*folder);
        findDuplicates();
    }
    return folder.has_value();
}

void AppModel::cancelDuplicates() {
    if (dupControl_) {
        dupControl_->cancel();
    }
}

void AppModel::cloneDuplicates(const DuplicateGroup& group) {
    if (!busy_.isEmpty()) {
        return;
    }
    setBusy(QStringLiteral("Replacing duplicates with clones…"));
    changeInBackground(
        this,
        [group] { return DuplicateExtras::clone({group}).sentence(); },
        [id = group.id](AppModel& model, const std::string& sentence) {
            model.setBusy({});
            model.setBanner(QString::fromStdString(sentence));
            model.removeGroup(id);
            model.refreshVolume();
        });
}

void AppModel::trashDuplicates(const DuplicateGroup& group) {
    runClean(
        DuplicateExtras::plan({group}),
        DisposalMode::trash,
        [model = QPointer{this}, id = group.id] {
            if (model) {
                model->removeGroup(id);
            }
        });
}

void AppModel::removeGroup(const Uuid& id) {
    auto left = dupGroups_;
    std::erase_if(left, [&](const DuplicateGroup& group) { return group.id == id; });
    assign(dupGroups_, std::move(left), &AppModel::dupGroupsChanged);
}

void AppModel::setDupRoot(std::string path) {
    if (isFindingDupes_) {
        return;
    }
    assign(dupRoot_, std::move(path), &AppModel::dupRootChanged);
}

QString AppModel::dupRootText() const {
    return QFile::decodeName(QByteArray::fromStdString(dupRoot_));
}

void AppModel::setDupRootText(const QString& path) {
    setDupRoot(QFile::encodeName(path).toStdString());
}

}  // namespace Brimlo
