#include "BrimloCore/RulePacks/Catalog.h"
#include "BrimloCore/SuggestionEngine/ProjectArtifactFinder.h"
#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"
#include "BrimloCore/Support/Json.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "Support/TempHome.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>

namespace Brimlo {
namespace {

using Paths = std::set<std::string>;

/// A home folder with an example of everything that the rules know, and with something close by
/// each that has to stay.
class SampleHomeTest : public Testing::TempHome {
protected:
    void SetUp() override {
        const std::string manifest = home() + ".manifest";
        const std::string command =
            "'" BRIMLO_SOURCES "/tools/make-home' '" + home() + "' --manifest '" + manifest + "'";
        ASSERT_EQ(std::system(command.c_str()), 0);
        const auto read = Json::parse(Testing::contentOf(manifest));
        std::remove(manifest.c_str());
        ASSERT_TRUE(read);
        finds = pathsByID(read->at("finds"));
        leaves = pathsByID(read->at("leaves"));
    }

    /// What each rule and pattern takes by itself, whatever the others say.
    static std::map<std::string, Paths> takenByID() {
        std::map<std::string, Paths> taken;
        for (const CleanupRule& rule : Catalog::builtInRules()) {
            for (const auto& target : SuggestionEngine::targets(rule)) {
                taken[rule.id].insert(target.item.path);
            }
        }
        for (const FoundArtifact& found : ProjectArtifactFinder::find({StoragePaths::home()}, 8)) {
            taken[found.pattern->id].insert(found.path);
        }
        return taken;
    }

    std::map<std::string, Paths> finds;
    std::map<std::string, Paths> leaves;

private:
    static std::map<std::string, Paths> pathsByID(const Json::Value& document) {
        std::map<std::string, Paths> rows;
        for (const auto& [id, paths] : document.as_object()) {
            for (const Json::Value& path : paths.as_array()) {
                rows[std::string{id}].emplace(path.as_string());
            }
        }
        return rows;
    }
};

/// The entry of `taken` whose path is `path`, lies above it, or lies in it.
const std::pair<const std::string, std::string>* conflict(
    const std::map<std::string, std::string>& taken, const std::string& path) {
    for (std::size_t end = path.size(); end > 0; end = path.rfind('/', end - 1)) {
        if (const auto found = taken.find(path.substr(0, end)); found != taken.end()) {
            return &*found;
        }
    }
    const auto next = taken.lower_bound(path + "/");
    return next != taken.end() && next->first.starts_with(path + "/") ? &*next : nullptr;
}

void expectNothingToBeOfferedTwice() {
    std::map<std::string, std::string> offered;
    for (const Suggestion& suggestion : SuggestionEngine::generate({})) {
        for (const SuggestionItem& item : suggestion.items) {
            EXPECT_EQ(conflict(offered, item.path), nullptr) << item.path;
            offered.emplace(item.path, suggestion.id);
        }
    }
    EXPECT_GT(offered.size(), 1'000U);
}

/// One home for all of it: to lay it out takes longer than to look through it.
TEST_F(SampleHomeTest, EachRowFindsItsOwnAndLeavesTheRest) {
    expectNothingToBeOfferedTwice();
    std::map<std::string, Paths> taken = takenByID();
    EXPECT_EQ(finds.size(), Catalog::builtInRules().size() + Catalog::artifactPatterns().size())
        << "every row has an example";
    for (const auto& [id, examples] : finds) {
        for (const std::string& example : examples) {
            EXPECT_TRUE(taken[id].contains(example)) << id << " does not find " << example;
        }
    }
    std::map<std::string, std::string> takers;  // By path.
    for (const auto& [taker, paths] : taken) {
        for (const std::string& path : paths) {
            takers.emplace(path, taker);
        }
    }
    for (const auto& [id, nearMisses] : leaves) {
        for (const std::string& nearMiss : nearMisses) {
            EXPECT_TRUE(Testing::exists(nearMiss));
            const auto* found = conflict(takers, nearMiss);
            EXPECT_EQ(found, nullptr) << found->second << " takes " << found->first << ", " << id
                                      << " leaves " << nearMiss;
        }
    }
}

}  // namespace
}  // namespace Brimlo
