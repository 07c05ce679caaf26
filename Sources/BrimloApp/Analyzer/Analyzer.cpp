#include "BrimloApp/Analyzer/Analyzer.h"

#include "BrimloApp/Components/Format.h"
#include "BrimloApp/Overview/Machine.h"
#include "BrimloApp/Review/PlanReview.h"
#include "BrimloApp/Shell/FolderSearch.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/Platform/Fmt.h"
#include "BrimloCore/ScanRecords/ScanHistory.h"
#include "BrimloCore/Support/Path.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "BrimloCore/UserRules/UserRules.h"

#include <algorithm>
#include <utility>

namespace Brimlo {

namespace {

using namespace std::chrono_literals;

constexpr auto kSamplingTime = 150ms;

/// The node of `path` in the tree below `top`, or null.
FileNode* nodeOf(std::string_view path, FileNode* top) {
    auto rest = top != nullptr ? Path::below(top->path(), path) : std::nullopt;
    FileNode* node = rest ? top : nullptr;
    while (node != nullptr && !rest->empty()) {
        const std::string_view name = rest->substr(0, rest->find('/'));
        rest->remove_prefix(std::min(name.size() + 1, rest->size()));
        const auto leadsThere = [&](const FileNode* child) {
            return !child->isAggregate && child->name() == name;
        };
        const auto found = std::ranges::find_if(node->children(), leadsThere);
        node = found == node->children().end() ? nullptr : *found;
    }
    return node;
}

/// An earlier scan, and the folder that surely grew most since.
struct Comparison {
    std::optional<ScanRecord> earlier;
    std::optional<Growth::Folder> grewMost;
};

/// Leaves a record for a later comparison, and compares with an earlier one: of a day ago or
/// before, since what grew within minutes says little; without one, the last. A failure is not
/// told: the scan itself is complete without it.
Comparison exchangeRecords(const FileNode& tree) {
    const auto now = std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now());
    Comparison comparison;
    comparison.earlier = ScanHistory::newest(tree.path(), now - std::chrono::days{1}).record;
    if (!comparison.earlier) {
        comparison.earlier = ScanHistory::newest(tree.path()).record;
    }
    const ScanRecord record = ScanRecord::of(tree, now);
    if (comparison.earlier) {
        const Growth growth = Growth::between(*comparison.earlier, record);
        if (const Growth::Folder* most = growth.grewMost()) {
            comparison.grewMost = *most;
        }
    }
    static_cast<void>(ScanHistory::remember(record));
    return comparison;
}

void removeNode(std::string_view path, const std::shared_ptr<FileNode>& top) {
    if (FileNode* const node = nodeOf(path, top.get())) {
        node->remove();
    }
}

/// Whether `node` is `root` or below it.
bool isInTree(const FileNode* node, const FileNode* root) {
    while (node != nullptr && node != root) {
        node = node->parent();
    }
    return node != nullptr;
}

}  // namespace

Analyzer::Analyzer(AppModel& app)
    : app_{app}
    , scanRoot_{StoragePaths::home()}
    , review_{std::make_unique<PlanReview>(app)}
    , rows_{std::make_unique<NodeRows>(app, *this)}
    , crumbs_{std::make_unique<CrumbRows>(*this)}
    , areas_{std::make_unique<AreaRows>()} {}

Analyzer::~Analyzer() {
    cancelScan();  // The scan outlives the model; cancelled, it ends soon.
    cameFrom_.reset();
    releaseInBackground(std::pair{std::move(root_), std::move(current_)});
}

// ---- The scan ------------------------------------------------------------------------------

void Analyzer::startScan(const std::string& path) {
    if (!isScanning_) {
        setScanRoot(path);
        scan();
    }
}

void Analyzer::scan() {
    if (isScanning_) {
        return;
    }
    scanControl_ = std::make_shared<ScanControl>();
    setScanning(true);
    setTree(nullptr);
    show(ScanControl::Progress{});
    areas_->show({});
    scanSampling_ = app_.surroundings().clock->schedule(
        kSamplingTime, Clock::Repeat::always, [this] { show(scanControl_->progress()); });

    struct Scanned {
        Node root;
        Comparison comparison;
        AreaRows::Unseen unseen;
    };
    runInBackground(
        this,
        [control = scanControl_, root = scanRoot_] {
            DiskScanner scanner{control, ScanOptions{}};
            Node tree = scanner.scan(root);
            Comparison comparison;
            if (tree && !control->isCancelled()) {
                comparison = exchangeRecords(*tree);
            }
            return Scanned{
                .root = std::move(tree),
                .comparison = std::move(comparison),
                .unseen = AreaRows::Unseen::of(*control)};
        },
        [control = scanControl_](Analyzer& analyzer, Scanned scanned) {
            analyzer.scanSampling_.reset();
            analyzer.show(control->progress());
            analyzer.setScanning(false);
            const std::string reopened = std::exchange(analyzer.reopened_, {});
            const auto went = std::exchange(analyzer.wentMeanwhile_, {});
            if (control->isCancelled()) {
                releaseInBackground(std::move(scanned.root));
            } else {
                for (const std::string& path : went) {
                    removeNode(path, scanned.root);
                }
                analyzer.compare(
                    scanned.comparison.earlier, std::move(scanned.comparison.grewMost));
                analyzer.setTree(std::move(scanned.root));
                if (FileNode* const folder = nodeOf(reopened, analyzer.root_.get())) {
                    analyzer.setCurrent(folder->shared());
                }
            }
            analyzer.areas_->show(std::move(scanned.unseen));
            analyzer.app_.machine()->refresh();
            if (std::exchange(analyzer.scanAgain_, false) && !control->isCancelled()) {
                analyzer.scan();
            }
        });
}

void Analyzer::compare(
    const std::optional<ScanRecord>& earlier, std::optional<Growth::Folder> grewMost) {
    grewMost_ = std::move(grewMost);
    earlier_.reset();
    if (!earlier) {
        return;
    }
    earlier_.emplace(Earlier{.time = earlier->time, .sizes = {}});
    for (std::size_t i = 0; i < earlier->folders.size(); ++i) {
        earlier_->sizes.emplace(earlier->path(i), earlier->folders[i].size);
    }
}

QDateTime Analyzer::since() const {
    return earlier_ ? QDateTime::fromSecsSinceEpoch(earlier_->time.time_since_epoch().count())
                    : QDateTime{};
}

QString Analyzer::grewMost() const {
    if (!hasTree() || !earlier_ || !grewMost_) {
        return {};
    }
    const bool isExact = grewMost_->least == grewMost_->most;
    return shown(UserRules::tildeForm(grewMost_->path)) + " grew most since " +
           Format::dateTime(since()) + (isExact ? ", by " : ", by at least ") +
           QString::fromStdString(Fmt::bytes(grewMost_->least)) + ".";
}

std::optional<std::int64_t> Analyzer::growth(const FileNode& node) const {
    if (!earlier_ || !node.isDirectory) {
        return std::nullopt;
    }
    const auto found = earlier_->sizes.find(node.path());
    return found == earlier_->sizes.end() ? std::nullopt : std::optional{node.size - found->second};
}

void Analyzer::scanHome() {
    startScan(StoragePaths::home());
}

void Analyzer::scanWholeDisk() {
    startScan("/");
}

bool Analyzer::scanDropped(const QUrl& address) {
    const auto folder = FolderSearch::droppedFolder(address);
    if (folder) {
        startScan(*folder);
    }
    return folder.has_value();
}

void Analyzer::cancelScan() {
    if (scanControl_) {
        scanControl_->cancel();
    }
}

void Analyzer::findAgainIf(const std::function<bool(const std::string& folder)>& isMeant) {
    if (isScanning_) {
        scanAgain_ = scanAgain_ || isMeant(scanRoot_);
    } else if (root_ && isMeant(root_->path())) {
        std::string opened = current_->path();
        startScan(root_->path());
        reopened_ = std::move(opened);
    }
}

void Analyzer::setScanRoot(std::string path) {
    assign(*this, scanRoot_, std::move(path), &Analyzer::scanRootChanged);
}

QString Analyzer::scanRootText() const {
    return fromPath(scanRoot_);
}

void Analyzer::setScanRootText(const QString& path) {
    setScanRoot(toPath(path));
}

void Analyzer::setScanning(bool isScanning) {
    assign(*this, isScanning_, isScanning, &Analyzer::isScanningChanged);
}

void Analyzer::show(ScanControl::Progress progress) {
    assign(*this, progress_, std::move(progress), &Analyzer::progressChanged);
}

// ---- The tree ------------------------------------------------------------------------------

void Analyzer::setTree(Node tree) {
    Node old = std::exchange(root_, tree);
    setCurrent(std::move(tree));
    // The tree of a disk has hundreds of thousands of nodes, too many to destroy on the main
    // thread.
    releaseInBackground(std::move(old));
}

void Analyzer::setCurrent(Node folder) {
    FileNode* entry = current_.get();
    while (entry != nullptr && entry->parent() != folder.get()) {
        entry = entry->parent();
    }
    cameFrom_ = entry != nullptr && folder ? entry->shared() : nullptr;
    assign(*this, current_, std::move(folder), &Analyzer::currentChanged);
}

void Analyzer::drill(const Node& node) {
    if (!node->children().empty()) {
        setCurrent(node);
    }
}

void Analyzer::forget(const std::vector<Node>& nodes) {
    for (const Node& node : nodes) {
        if (isInTree(node.get(), root_.get())) {
            node->remove();
        } else {
            removeNode(node->path(), root_);
        }
        if (isScanning_) {
            wentMeanwhile_.insert(node->path());
        }
    }
    if (current_ && !isInTree(current_.get(), root_.get())) {
        setCurrent(root_);
    }
    Q_EMIT nodesWent();
}

void Analyzer::setAnalyzerMode(int mode) {
    assign(*this, analyzerMode_, mode, &Analyzer::analyzerModeChanged);
}

}  // namespace Brimlo
