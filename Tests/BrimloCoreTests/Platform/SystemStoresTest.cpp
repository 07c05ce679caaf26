#include "BrimloCore/Platform/SystemStores.h"

#include "BrimloCore/SystemSpace/SystemSpace.h"
#include "Support/TempHome.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

#include <sys/stat.h>

namespace Brimlo::Platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SystemStoresTest : public Testing::TempHome {
protected:
    /// The store of this name, as this system would have it with the home folder as its root.
    [[nodiscard]] SystemStore named(const std::string& name) const {
        const std::vector<SystemStore> stores = systemStores(at(""));
        const auto found = std::ranges::find(stores, name, &SystemStore::name);
        return found == stores.end() ? SystemStore{} : *found;
    }
};

TEST_F(SystemStoresTest, FindsTheRevisionsOfSnapsThatDoNotRun) {
    for (const char* const name :
         {"code_170", "code_171", "my-app_x1", "my-app_x2", "unmounted_5", "A;b_1", "noline"}) {
        write(std::string{"var/lib/snapd/snaps/"} + name + ".snap");
    }
    write("var/lib/snapd/snaps/partial/code_172.snap");
    link("snap/code/current", "171");
    link("var/lib/snapd/snap/my-app/current", "x2");
    link("snap/A;b/current", "2");
    const SystemStore old = named("Old snap revisions");
    EXPECT_THAT(
        old.paths,
        ElementsAre(
            at("var/lib/snapd/snaps/code_170.snap"), at("var/lib/snapd/snaps/my-app_x1.snap")));
    EXPECT_THAT(
        old.commands,
        ElementsAre(
            "sudo snap remove code --revision=170", "sudo snap remove my-app --revision=x1"));
}

TEST_F(SystemStoresTest, FindsTheRuntimesThatNoApplicationNames) {
    const auto deploy = [&](const std::string& below, const std::string& metadata) {
        write(below + "/5b3c/metadata", metadata);
        link(below + "/active", "5b3c");
    };
    const std::string own = ".local/share/flatpak/";
    const std::string shared = "var/lib/flatpak/";
    deploy(
        own + "app/org.a.Editor/x86_64/stable",
        "[Application]\nname=org.a.Editor\nruntime=org.b.Platform/x86_64/24\n"
        "sdk=org.b.Sdk/x86_64/24\n[Extension x]\nruntime=org.b.Platform/x86_64/22\n");
    link(own + "app/org.a.Editor/current", "x86_64/stable");
    for (const std::string used : {"org.b.Platform/x86_64/24", "org.b.Sdk/x86_64/24"}) {
        deploy(shared + "runtime/" + used, "[Runtime]\nruntime=" + used + "\n");
    }
    deploy(
        shared + "runtime/org.b.Platform.Locale/x86_64/22",
        "[Runtime]\nname=org.b.Platform.Locale\n[ExtensionOf]\nref=runtime/org.b.Platform\n");
    EXPECT_THAT(named("Unused Flatpak runtimes").paths, IsEmpty());

    deploy(shared + "runtime/org.b.Platform/x86_64/22", "[Runtime]\nname=org.b.Platform\n");
    makeFolder(own + "runtime/org.c.Platform/x86_64/1");
    EXPECT_THAT(
        named("Unused Flatpak runtimes").paths,
        ElementsAre(
            at(shared + "runtime/org.b.Platform/x86_64/22"),
            at(own + "runtime/org.c.Platform/x86_64/1")));
}

TEST_F(SystemStoresTest, MeasuresWhatIsThereAndTouchesNothing) {
    fill("var/cache/apt/archives/a.deb", 90'000);
    write("var/cache/apt/archives/partial/unread");
    fill("var/log/journal/5c/system.journal", 300'000);
    fill("var/lib/snapd/snaps/code_170.snap", 50'000);
    link("snap/code/current", "171");
    makeFolder("var/lib/systemd/coredump");
    chmod(at("var/cache/apt/archives/partial").c_str(), 0);
    const bool isHidden = !std::filesystem::exists(at("var/cache/apt/archives/partial/unread"));
    const auto before = [&] {
        return std::vector{Testing::describeTree(at("var/log")), Testing::describeTree(at("snap"))};
    };
    const auto tree = before();

    std::vector<std::string> names;
    for (const SystemPart& part : SystemSpace::measure(systemStores(at("")))) {
        names.push_back(part.store.name + (part.isComplete ? "" : ", in part"));
        EXPECT_GT(part.size, 40'000) << part.store.name;
    }
    EXPECT_THAT(
        names,
        ElementsAre(
            "System journal",
            isHidden ? "Packages of apt, in part" : "Packages of apt",
            "Old snap revisions"));
    EXPECT_EQ(before(), tree);
    chmod(at("var/cache/apt/archives/partial").c_str(), 0700);
}

}  // namespace
}  // namespace Brimlo::Platform
