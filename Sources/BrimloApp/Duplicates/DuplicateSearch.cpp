#include "BrimloApp/Duplicates/DuplicateSearch.h"

#include "BrimloApp/Components/FileKinds.h"
#include "BrimloApp/Duplicates/DuplicateRows.h"
#include "BrimloApp/Overview/Machine.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/Review/PlanReview.h"
#include "BrimloApp/Shell/Search.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloCore/Cleaner/DuplicateExtras.h"
#include "BrimloCore/Support/Path.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <set>
#include <string_view>
#include <utility>

namespace Brimlo {

namespace {

QStringList fromPaths(const std::vector<std::string>& paths) {
    QStringList texts;
    std::ranges::transform(paths, std::back_inserter(texts), fromPath);
    return texts;
}

}  // namespace

DuplicateSearch::DuplicateSearch(AppModel& app)
    : FolderSearch{app}
    , review_{std::make_unique<PlanReview>(app)}
    , rows_{std::make_unique<DuplicateRows>(*this)} {}

DuplicateSearch::~DuplicateSearch() = default;

void DuplicateSearch::start(std::shared_ptr<ScanControl> control) {
    setGroups({});
    struct Found {
        Groups groups;
        std::vector<EqualFolders> folders;
        Refusals refusals;
        DuplicateFinder::LeftOut leftOut;
    };
    runInBackground(
        this,
        [folders = folders(), minSize = minSize_, control] {
            Found found;
            found.groups =
                DuplicateFinder::find(folders, minSize, control.get(), {}, &found.leftOut);
            found.folders = EqualFolders::among(found.groups, folders, minSize, control.get());
            for (const DuplicateGroup& group : found.groups) {
                if (auto refusal = DuplicateExtras::cloneRefusal(group)) {
                    found.refusals.emplace(group.id, *std::move(refusal));
                }
            }
            return found;
        },
        [control](DuplicateSearch& search, Found found) {
            search.refusals_ = std::move(found.refusals);
            search.leftOut_ = found.leftOut;
            search.setGroups(std::move(found.groups), std::move(found.folders));
            search.end(*control);
        });
}

void DuplicateSearch::setGroups(Groups groups, std::vector<EqualFolders> folders) {
    if (groups_ != groups) {
        groups_ = std::move(groups);
        equalFolders_ = std::move(folders);
        reasons_ = choice_.reasons(groups_);
        Q_EMIT groupsChanged();
    }
}

// ---- What is searched ----------------------------------------------------------------------

std::vector<std::string> DuplicateSearch::folders() const {
    std::vector<std::string> folders{root()};
    folders.insert(folders.end(), otherFolders_.begin(), otherFolders_.end());
    return folders;
}

QVariantList DuplicateSearch::equalFolders() const {
    QVariantList sets;
    for (const EqualFolders& set : equalFolders_) {
        sets.append(QVariantMap{
            {"bytes",   number(set.bytes)     },
            {"files",   number(set.files)     },
            {"folders", fromPaths(set.folders)},
            {"larger",  fromPaths(set.larger) }
        });
    }
    return sets;
}

QStringList DuplicateSearch::otherFolders() const {
    return fromPaths(otherFolders_);
}

void DuplicateSearch::addFolder(const QString& folder) {
    const std::string path = Path::standardized(toPath(folder));
    const auto holds = [&](const std::string& known) {
        return Path::below(known, path).has_value();
    };
    if (std::ranges::any_of(folders(), holds)) {
        app().banner()->show(QStringLiteral("This folder is searched already."));
        return;
    }
    otherFolders_.push_back(path);
    Q_EMIT searchedChanged();
}

void DuplicateSearch::removeFolder(const QString& folder) {
    if (std::erase(otherFolders_, toPath(folder)) > 0) {
        Q_EMIT searchedChanged();
    }
}

void DuplicateSearch::setMinSize(double bytes) {
    constexpr double kMost = 9e18;
    assign(
        *this,
        minSize_,
        static_cast<std::int64_t>(std::clamp(bytes, 1.0, kMost)),
        &DuplicateSearch::searchedChanged);
}

// ---- What is shown -------------------------------------------------------------------------

void DuplicateSearch::setQuery(const QString& query) {
    assign(*this, query_, query, &DuplicateSearch::filterChanged);
}

void DuplicateSearch::setKind(int kind) {
    assign(
        *this, kind_, std::clamp(kind, 0, FileKinds::count() - 1), &DuplicateSearch::filterChanged);
}

std::vector<bool> DuplicateSearch::areShown() const {
    const Search search{query_};
    const FileKind kind = kAllFileKinds[static_cast<std::size_t>(kind_)];
    const auto fits = [&](const DuplicateGroup::Copy& copy) {
        return (kind == FileKind::folder || kindOfFile(Path::name(copy.path)) == kind) &&
               search.findsPath(copy.path);
    };
    std::vector<bool> shown;
    for (const DuplicateGroup& group : groups_) {
        shown.push_back(std::ranges::any_of(group.copies, fits));
    }
    return shown;
}

QString DuplicateSearch::leftOut() const {
    return words(leftOut_.words());
}

// ---- Which copy stays ----------------------------------------------------------------------

void DuplicateSearch::chooseAnew() {
    reasons_ = choice_.reasons(groups_);
    Q_EMIT choiceChanged();
}

void DuplicateSearch::setRule(int rule) {
    constexpr int kLast = static_cast<int>(KeepReason::tidiestFolder);
    choice_.setRule(static_cast<KeepReason>(std::clamp(rule, 0, kLast)));
    chooseAnew();
}

QStringList DuplicateSearch::keptFolders() const {
    return fromPaths(choice_.folders());
}

void DuplicateSearch::keepUnder(const std::string& folder) {
    if (const auto kept = choice_.keepUnder(folder); !kept) {
        app().banner()->show(
            QStringLiteral("Could not keep it: %1.").arg(shown(kept.error().description)));
        return;
    }
    chooseAnew();
}

void DuplicateSearch::release(const QString& folder) {
    choice_.release(toPath(folder));
    chooseAnew();
}

void DuplicateSearch::keep(std::size_t group, std::size_t copy) {
    choice_.keep(groups_[group].id, groups_[group].copies[copy].path);
    reasons_[group] = choice_.reasons({groups_[group]}).front();
    Q_EMIT choiceChanged();
}

void DuplicateSearch::reviewExtras() {
    Groups groups;
    for (std::size_t i = 0; const bool isShown : areShown()) {
        if (isShown) {
            groups.push_back(groups_[i]);
        }
        ++i;
    }
    review_->openPlan([groups = std::move(groups), choice = choice_] {
        return DuplicateExtras::plan(groups, choice);
    });
}

// ---- Actions -------------------------------------------------------------------------------

std::string DuplicateSearch::cloneRefusal(const Uuid& group) const {
    const auto refusal = refusals_.find(group);
    return refusal == refusals_.end() ? std::string{} : refusal->second;
}

void DuplicateSearch::clone(const DuplicateGroup& group) {
    if (!app().busy().isEmpty()) {
        return;
    }
    app().setBusy(QStringLiteral("Replacing duplicates with clones…"));
    changeInBackground(
        this,
        [group, choice = choice_] { return DuplicateExtras::clone({group}, choice).sentence(); },
        [id = group.id](DuplicateSearch& search, const std::string& sentence) {
            search.app().setBusy({});
            search.app().banner()->show(QString::fromStdString(sentence));
            search.remove(id);
            search.app().machine()->refresh();
        });
}

void DuplicateSearch::trash(const DuplicateGroup& group) {
    app().cleanup()->run(
        DuplicateExtras::plan({group}, choice_), [this, id = group.id] { remove(id); });
}

void DuplicateSearch::forget(const CleanPlan& gone) {
    std::set<std::string> paths;
    std::ranges::transform(gone.items(), std::inserter(paths, paths.end()), &CleanItem::path);
    Groups left = groups_;
    for (DuplicateGroup& group : left) {
        std::erase_if(group.copies, [&](const auto& copy) { return paths.contains(copy.path); });
    }
    std::erase_if(left, [](const DuplicateGroup& group) { return group.copies.size() < 2; });
    setGroups(std::move(left), foldersWithout({paths.begin(), paths.end()}));
}

void DuplicateSearch::remove(const Uuid& id) {
    Groups left = groups_;
    std::vector<std::string> changed;
    std::erase_if(left, [&](const DuplicateGroup& group) {
        if (group.id == id) {
            changed = group.paths();
        }
        return group.id == id;
    });
    setGroups(std::move(left), foldersWithout(changed));
}

/// The sets of equal folders in which none of these files lies.
std::vector<EqualFolders> DuplicateSearch::foldersWithout(
    const std::vector<std::string>& changed) const {
    std::set<std::string, std::less<>> touched;
    for (const std::string& path : changed) {
        std::string_view folder = Path::parent(path);
        while (folder != "/" && touched.emplace(folder).second) {
            folder = Path::parent(folder);
        }
    }
    const auto isTouched = [&](const std::string& folder) { return touched.contains(folder); };
    std::vector<EqualFolders> left = equalFolders_;
    std::erase_if(left, [&](const EqualFolders& set) {
        return std::ranges::any_of(set.folders, isTouched) ||
               std::ranges::any_of(set.larger, isTouched);
    });
    return left;
}

}  // namespace Brimlo
