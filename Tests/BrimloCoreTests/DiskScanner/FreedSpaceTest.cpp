#include "BrimloCore/DiskScanner/FreedSpace.h"

#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "Support/TempHome.h"

#include <filesystem>
#include <random>
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
        EXPECT_EQ(before - DiskScanner::quickSize(at(tree)), freed.bytes())
            << testing::PrintToString(chosen);
    }
}

}  // namespace
}  // namespace Brimlo
