#include "BrimloCore/ScanRecords/Growth.h"

#include "BrimloCore/DiskScanner/FileTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <random>

namespace Brimlo {
namespace {

/// Folders by number, 0 the root, each with what it holds itself.
struct Model {
    struct Folder {
        int parent = 0;
        std::int64_t bytes = 0;
        std::uint64_t inode = 0;
    };
    std::map<int, Folder> folders;

    std::vector<int> in(int folder) const {
        std::vector<int> found;
        for (const auto& [number, each] : folders) {
            if (number != 0 && each.parent == folder) {
                found.push_back(number);
            }
        }
        return found;
    }

    /// The bytes in and below a folder, without the folders below that `isApart` tells.
    template <typename Apart>
    std::int64_t bytes(int folder, const Apart& isApart) const {
        std::int64_t sum = folders.contains(folder) ? folders.at(folder).bytes : 0;
        for (const int each : in(folder)) {
            sum += isApart(each) ? 0 : bytes(each, isApart);
        }
        return sum;
    }

    bool isListed(int folder) const {
        return folders.contains(folder) &&
               (folder == 0 || bytes(folder, [](int) { return false; }) >= (1 << 20));
    }

    std::string path(int folder) const {
        return folder == 0 ? "/model"
                           : path(folders.at(folder).parent) + "/f" + std::to_string(folder);
    }

    FileNode& node(FileTree& tree, int folder, FileNode* parent) const {
        const std::string whole = path(folder);
        FileNode& made = tree.add(
            {.name = parent == nullptr ? whole : whole.substr(whole.rfind('/') + 1),
             .parent = parent,
             .size = bytes(folder, [](int) { return false; })});
        std::vector<FileNode*> children;
        for (const int each : in(folder)) {
            children.push_back(&node(tree, each, &made));
        }
        tree.setChildren(made, children);
        return made;
    }

    ScanRecord record(std::int64_t seconds) const {
        const auto tree = std::make_shared<FileTree>();
        ScanRecord record = ScanRecord::of(
            node(*tree, 0, nullptr), std::chrono::sys_seconds{std::chrono::seconds{seconds}});
        record.device = 1;
        for (std::size_t i = 1; i < record.folders.size(); ++i) {
            record.folders[i].inode = folders.at(std::stoi(record.folders[i].name.substr(1))).inode;
        }
        EXPECT_EQ(ScanRecord::decode(record.encode()), record);
        return record;
    }
};

TEST(GrowthTest, TellsEachPlantedChangeAndNoOther) {
    constexpr int kFolders = 400;
    constexpr int kChanges = 100;  // Of each kind.
    std::mt19937 random{22};
    const auto below = [&](int limit) { return static_cast<int>(random() % limit); };
    const auto someBytes = [&] { return std::int64_t{1} + below(1 << (10 + below(14))); };
    Model before;
    for (int i = 0; i < kFolders; ++i) {
        before.folders[i] = {
            .parent = i == 0 ? 0 : below(i), .bytes = someBytes(), .inode = 1000U + i};
    }
    // Those that move are listed before and afterwards; unlisted, they would be other folders.
    for (int i = kFolders / 2; i < kFolders; i += 7) {
        before.folders.at(i).bytes += 1 << 20;
    }
    Model now = before;
    for (int i = 0; i < kChanges; ++i) {
        Model::Folder& changed = now.folders.at(below(kFolders));
        changed.bytes = someBytes() + (changed.bytes > 1 << 20 ? 1 << 20 : 0);
    }
    for (int i = kFolders / 2; i < kFolders; i += 7) {
        now.folders.at(i).parent = below(i);  // Never into itself.
    }
    std::vector<std::uint64_t> freed;
    for (int i = kFolders - kChanges / 2; i < kFolders; ++i) {
        if (now.in(i).empty()) {
            freed.push_back(now.folders.at(i).inode);
            now.folders.erase(i);
        }
    }
    for (int i = kFolders; i < kFolders + kChanges; ++i) {
        const int parent = below(kFolders / 2);
        const std::uint64_t reused = freed[static_cast<std::size_t>(i) % freed.size()];
        now.folders[i] = {.parent = parent, .bytes = someBytes(), .inode = reused};
    }

    const Growth growth = Growth::between(before.record(1), now.record(2));
    EXPECT_TRUE(
        std::ranges::is_sorted(growth.folders, std::ranges::greater{}, &Growth::Folder::least));
    const auto isInBoth = [&](int i) { return before.isListed(i) && now.isListed(i); };
    const auto isInOne = [&](int i) { return before.isListed(i) || now.isListed(i); };
    std::size_t told = 0;
    for (int i = 0; i < kFolders + kChanges; ++i) {
        if (!isInOne(i)) {
            continue;
        }
        const bool isSame = isInBoth(i);
        const auto truth = isSame ? now.bytes(i, isInOne) - before.bytes(i, isInOne)
                                  : now.bytes(i, isInBoth) - before.bytes(i, isInBoth);
        const std::string path = now.isListed(i) ? now.path(i) : before.path(i);
        SCOPED_TRACE(path);
        const auto found = std::ranges::find(growth.folders, path, &Growth::Folder::path);
        // A topmost one stands for those below it that came or went with it.
        const int parent = (now.isListed(i) ? now : before).folders.at(i).parent;
        if (!isSame && !isInBoth(parent)) {
            EXPECT_EQ(found, growth.folders.end());
            continue;
        }
        const bool hasMoved = isSame && before.folders.at(i).parent != now.folders.at(i).parent;
        if (found == growth.folders.end()) {
            const auto crosses = [&](int each) { return isInOne(each) && !isInBoth(each); };
            const std::vector<int> inside = now.in(i);
            const std::vector<int> wereInside = before.in(i);
            const auto unknown = isSame ? std::ranges::count_if(inside, crosses) +
                                              std::ranges::count_if(wereInside, crosses)
                                        : 1;
            EXPECT_LE(std::abs(truth), unknown * ((1 << 20) - 1));
            EXPECT_FALSE(hasMoved);
            continue;
        }
        ++told;
        EXPECT_LE(found->least, truth);
        EXPECT_GE(found->most, truth);
        EXPECT_EQ(found->kind == Growth::Kind::moved, hasMoved);
        EXPECT_EQ(found->formerPath.has_value(), hasMoved);
    }
    EXPECT_EQ(told, growth.folders.size());
    EXPECT_GT(told, 30U);
    EXPECT_TRUE(Growth::between(now.record(2), now.record(3)).folders.empty());
}

}  // namespace
}  // namespace Brimlo
