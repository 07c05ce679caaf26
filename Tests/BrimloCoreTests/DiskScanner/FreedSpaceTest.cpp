#include "BrimloCore/DiskScanner/FreedSpace.h"

#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "Support/TempHome.h"

#include <filesystem>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace Brimlo {
namespace {

namespace fs = std::filesystem;

using FreedSpaceTest = Testing::TempHome;

TEST_F(FreedSpaceTest, IsWhatGoesWithRandomSelections) {
    constexpr int kRounds = 60;
    constexpr std::size_t kPlaces = 6;
    constexpr int kFiles = 25;
    std::mt19937 random{22};
    const auto below = [&](std::size_t limit) { return random() % limit; };
    for (int round = 0; round < kRounds; ++round) {
        SCOPED_TRACE(round);
        const std::string tree = "tree" + std::to_string(round);
        std::vector<std::string> places;
        for (std::size_t i = 0; i < kPlaces; ++i) {
            places.push_back(tree + "/" + std::to_string(i));
            makeFolder(places.back() + "/inner");
        }
        const auto anyName = [&](int number) {
            return places[below(kPlaces)] + (below(2) == 0 ? "/inner/" : "/") +
                   std::to_string(number);
        };
        int number = 0;
        for (int file = 0; file < kFiles; ++file) {
            const std::string path = fill(anyName(++number), 1 + below(60'000));
            for (std::size_t names = below(4); names > 0; --names) {
                fs::create_hard_link(path, at(anyName(++number)));
            }
        }
        places.push_back(tree + "/single");
        fs::create_hard_link(fill(places.front() + "/of two", 9000), at(places.back()));

        FreedSpace freed;
        std::vector<std::string> chosen;
        for (const std::string& place : places) {
            const SpaceUse use = DiskScanner::spaceUse(at(place));
            freed.add(use);
            if (below(2) == 0) {
                freed.remove(use);
            } else {
                chosen.push_back(at(place));
            }
        }
        const std::int64_t before = DiskScanner::quickSize(at(tree));
        for (const std::string& path : chosen) {
            fs::remove_all(path);
        }
        EXPECT_EQ(before - DiskScanner::quickSize(at(tree)), freed.atLeast())
            << testing::PrintToString(chosen);
    }
}

TEST_F(FreedSpaceTest, CountsBlocksThatSeveralShareAtMostOnce) {
    constexpr std::uint64_t kVolume = 40;
    std::mt19937 random{23};
    FreedSpace freed;
    std::vector<SuggestionItem> items;
    for (int step = 0; step < 2000; ++step) {
        const bool isAdded = items.empty() || random() % 40 > items.size();
        if (isAdded) {
            SharedSpace shared;
            for (std::uint64_t start = random() % 9; start + 5 < kVolume; start += 6) {
                const std::uint64_t end = start + 1 + random() % 5;
                shared.unsure.ranges.push_back({random() % 2, start, end});
                shared.unsure.bytes += static_cast<std::int64_t>(end - start);
            }
            items.push_back({.path = {}, .size = 400});
            items.back().shared = std::make_shared<const SharedSpace>(shared);
            freed.add(items.back());
        } else {
            std::swap(items.at(random() % items.size()), items.back());
            freed.remove(items.back());
            items.pop_back();
        }
        std::set<std::uint64_t> blocks;
        std::int64_t sure = 0;
        for (const SuggestionItem& item : items) {
            sure += item.size - item.shared->unsure.bytes;
            for (const auto& [device, start, end] : item.shared->unsure.ranges) {
                for (std::uint64_t block = start; block < end; ++block) {
                    blocks.insert(device * kVolume + block);
                }
            }
        }
        ASSERT_EQ(freed.atLeast(), sure) << step;
        ASSERT_EQ(freed.atMost(), sure + std::ssize(blocks)) << step;
        ASSERT_EQ(freed, FreedSpace::of(items)) << step;
    }
}

}  // namespace
}  // namespace Brimlo
