#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Duplicates/DuplicateSearch.h"
#include "BrimloApp/History/History.h"
#include "BrimloApp/LargeFiles/LargeFileSearch.h"
#include "BrimloApp/Overview/DiskAccount.h"
#include "BrimloApp/Overview/Machine.h"
#include "BrimloApp/Review/Cleanup.h"
#include "BrimloApp/SmartClean/SmartClean.h"
#include "BrimloAppTests/Support/WindowTest.h"
#include "BrimloCore/Platform/Fmt.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>

#include <filesystem>

namespace Brimlo {
namespace {

using Testing::exists;

class ContentViewTest : public Testing::WindowTest {
protected:
    /// Puts something into the Trash.
    void fillTrash() const {
        fill(".local/share/Trash/files/old", 70'000);
        write(
            ".local/share/Trash/info/old.trashinfo",
            "[Trash Info]\nPath=/old\nDeletionDate=2026-01-01T00:00:00\n");
    }
};

const char* const kTitles[] = {
    "Overview",
    "Smart Clean",
    "Space Analyzer",
    "Large Files",
    "Rules",
    "Duplicates",
    "History",
    "Settings"};

TEST_F(ContentViewTest, OpensSectionsByTheirRowsAndTheMenu) {
    open();
    press("Menu");
    choose("Rules");
    await([&] { return find(QAccessible::Pane, "Rules") != nullptr; }, "the effect");
    // By the arrows, which stay within the list.
    click(QAccessible::ListItem, "Settings");
    for (const int pressed : {Qt::Key_Down, Qt::Key_Home, Qt::Key_Up, Qt::Key_Down}) {
        key(pressed);
    }
    EXPECT_EQ(model().section(), Section::Clean);
    finish();
}

TEST_F(ContentViewTest, RescansWhatIsShownByKeysAndMenu) {
    model().analyzer()->setScanRoot(makeFolder("tree"));
    open();
    const auto isSuggesting = [](const AppModel& it) { return it.smartClean()->isSuggesting(); };
    const std::pair<Section, bool (*)(const AppModel&)> cases[] = {
        {Section::Overview,   isSuggesting                                                     },
        {Section::Clean,      isSuggesting                                                     },
        {Section::LargeFiles, [](const AppModel& it) { return it.largeFiles()->isSearching(); }},
        {Section::Duplicates, [](const AppModel& it) { return it.duplicates()->isSearching(); }},
        {Section::Analyzer,   [](const AppModel& it) { return it.analyzer()->isScanning(); }   },
    };
    for (const auto& [section, hasBegun] : cases) {
        SCOPED_TRACE(static_cast<int>(section));
        model().setSection(section);
        finish();
        {
            const Testing::HeldWork held;
            key(Qt::Key_R, Qt::ControlModifier);
            EXPECT_TRUE(hasBegun(model()));
            EXPECT_EQ(model().analyzer()->isScanning(), section == Section::Analyzer);
        }
        finish();
    }
    const auto before = model().analyzer()->root();
    press("Menu");
    const QQuickItem* const updates = find(QAccessible::MenuItem, "Check for Updates…");
    ASSERT_NE(updates, nullptr);
    EXPECT_FALSE(updates->isEnabled()) << "this build has no feed";
    choose("Rescan");
    await(
        [&] { return model().analyzer()->hasTree() && model().analyzer()->root() != before; },
        "another scan");
    finish();
    key(Qt::Key_Q, Qt::ControlModifier);
    await([&] { return !window().isVisible(); }, "the effect");
}

TEST_F(ContentViewTest, ShowsWorkAndMessagesOverTheScreenAndMovesNothing) {
    addSampleRules();
    open(Section::Clean);
    const auto placeOf = [this](const QAccessible::Role role, const char* name) {
        const QQuickItem& item = get(role, name);
        return item.mapRectToScene(item.boundingRect());
    };
    const std::pair<QAccessible::Role, const char*> targets[] = {
        {QAccessible::ListItem, "Mine, *"        },
        {QAccessible::Button,   "Preview"        },
        {QAccessible::Button,   "Review & Clean…"}
    };
    std::vector<QRectF> places;
    for (const auto& [role, name] : targets) {
        places.push_back(placeOf(role, name));
    }
    model().banner()->show(QString{"It could not be done. "}.repeated(40));
    model().setBusy("Working…");
    waitToSee("Working…");
    const QRectF covered = placeOf(QAccessible::Notification, "It could *") |
                           placeOf(QAccessible::Notification, "Working…");
    for (std::size_t i = 0; i < places.size(); ++i) {
        SCOPED_TRACE(targets[i].second);
        EXPECT_EQ(placeOf(targets[i].first, targets[i].second), places[i]);
        EXPECT_TRUE(i == 0 || !covered.intersects(places[i]));
    }
    model().setBusy({});
    model().banner()->show({});

    await([&] { return !sees("Dismiss"); }, "its end");
    model().banner()->show("Something happened.");
    waitToSee("Something happened.");
    press("Dismiss");
    EXPECT_TRUE(model().banner()->text().isEmpty());
    await([&] { return !sees("Something happened."); }, "its end");

    fillTrash();
    {
        const Testing::HeldWork held{Background::writers()};
        model().history()->emptyTrash();
        waitToSee("Emptying Trash…");
        waitToSee("Working");
    }
    finish();
    await([&] { return !sees("Working"); }, "the end of it");
    waitToSee(model().banner()->text());
}

TEST_F(ContentViewTest, ShowsTheTrashOnlyWhenThereIsSomethingInIt) {
    open();
    EXPECT_FALSE(sees("Empty Trash"));
    fillTrash();
    key(Qt::Key_2, Qt::ControlModifier);
    finish();
    key(Qt::Key_1, Qt::ControlModifier);
    finish();
    const std::string size = Fmt::bytes(static_cast<std::int64_t>(model().machine()->trashBytes()));
    EXPECT_TRUE(sees(QString::fromStdString(size + " in Trash"))) << "showing it measures it";
    std::filesystem::create_hard_link(at(".local/share/Trash/files/old"), at("elsewhere"));
    model().machine()->refresh();
    finish();
    EXPECT_TRUE(sees(QString::fromStdString(size + " in Trash, frees *")));
    std::filesystem::remove(at("elsewhere"));
    press("Empty Trash");
    waitToSee(QString::fromStdString("1 item · " + size));
    EXPECT_TRUE(sees("This deletes everything in the Trash, not only Brimlo's. *"));
    EXPECT_TRUE(exists(at(".local/share/Trash/files/old")));
    press("Delete for good");
    finish();
    EXPECT_FALSE(exists(at(".local/share/Trash/files/old")));
    EXPECT_FALSE(sees("Empty Trash"));
}

TEST_F(ContentViewTest, LeadsFromTheOverviewToWhatCanGo) {
    write(".config/keep");
    open();
    const std::vector<const char*> states{
        "Find caches, *", "Looking for caches, *", "Nothing was found that can go."};
    EXPECT_EQ(seen(states), std::vector<std::string>{states[0]});
    {
        const Testing::HeldWork held;
        clock.advance(std::chrono::seconds{1});
        EXPECT_EQ(seen(states), std::vector<std::string>{states[1]}) << "by itself";
    }
    finish();
    EXPECT_EQ(seen(states), std::vector<std::string>{states[2]});
    EXPECT_EQ(sees("Full Disk Access is off, *"), !model().machine()->hasFullDiskAccess());
    for (const std::optional<std::int64_t> purgeable : {std::optional<std::int64_t>{}, {4}}) {
        model().machine()->setVolume(VolumeInfo::Snapshot{
            .total = 9, .available = 4, .availableIncludingPurgeable = purgeable});
        EXPECT_EQ(sees("Purgeable"), purgeable.has_value()) << "none is not the same as 0 bytes";
    }
    {
        const Testing::HeldWork held;
        press("Find cleanable space");
        EXPECT_EQ(model().section(), Section::Clean);
        EXPECT_TRUE(model().smartClean()->isSuggesting()) << "the screen starts the run";
        key(Qt::Key_1, Qt::ControlModifier);
        EXPECT_TRUE(sees("Scanning…"));
    }
    finish();
    makeFolder("tree");
    model().analyzer()->setScanRoot(at("tree"));
    press("Analyze disk usage");
    EXPECT_EQ(model().section(), Section::Analyzer);
    finish();
    EXPECT_TRUE(model().analyzer()->hasTree());
    key(Qt::Key_1, Qt::ControlModifier);
    press("Analyze disk usage");
    EXPECT_FALSE(model().analyzer()->isScanning()) << "there is a tree already";
}

TEST_F(ContentViewTest, MeasuresWhatTheSystemKeepsAndCopiesItsCommands) {
    fill(".local/share/containers/storage/overlay/a", 90'000);
    open();
    {
        const Testing::HeldWork held;
        press("Outside your files…");
        waitToSee("Measuring…");
    }
    finish();
    waitToSee("Storage of Podman, *");
    expectLaidOut();
    click(QAccessible::ListItem, "Storage of Podman, *");
    key(Qt::Key_Return);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), "podman system prune");
    key(Qt::Key_Escape);
    await([&] { return !sees("Storage of Podman, *"); }, "its end");
    fill(".local/share/docker/overlay2/a", 900'000);
    press("Outside your files…");
    finish();
    waitToSee("Storage of rootless Docker, *");
    EXPECT_TRUE(exists(at(".local/share/docker/overlay2/a")));
}

TEST_F(ContentViewTest, TellsWhyTheDiskIsFullWhileTheSheetIsOpen) {
    using enum AccountLine::Kind;
    open();
    {
        const Testing::HeldWork held;
        press("Why is it full?");
        waitToSee("Counting… *");
        press("Stop");
        await([&] { return !sees("Counting… *"); }, "its end");
        EXPECT_FALSE(model().diskAccount()->isCounting());
    }
    finish();
    {
        const Testing::HeldWork held;
        press("Why is it full?");
        model().diskAccount()->show(VolumeAccount{
            .use = {.total = 100'000, .free = 1'000, .available = 1'000},
            .lines = {{area, home() + "/big", 120'000, 7}, {rest, "Not explained", -21'000, 0}},
            .snapshots = {"/kept"}
        });
        waitToSee("~/big, 120 KB");
        EXPECT_TRUE(sees("Not explained, -21 KB"));
        EXPECT_TRUE(sees("*They are /kept."));
        expectLaidOut();
        press("Done");
    }
    finish();
    EXPECT_EQ(model().diskAccount()->lines().size(), 2) << "a late answer changes nothing";
}

TEST_F(ContentViewTest, AsksOnceAboutTheCommandLineTool) {
    bundleTool();
    writeProgram("pkexec", "exec \"$@\"");
    open();
    EXPECT_FALSE(sees("Use Brimlo from the terminal?")) << "nothing was cleaned yet";
    close();
    model().cleanup()->run(planFiles(1));
    finish();
    restart();
    open();
    waitToSee("Use Brimlo from the terminal?");
    expectLaidOut();
    press("Install");
    await([&] { return !sees("Use Brimlo from the terminal?"); }, "the effect");
    EXPECT_TRUE(exists(at("bin/brimlo")));
    close();
    open();
    EXPECT_FALSE(sees("Use Brimlo from the terminal?"));
}

TEST_F(ContentViewTest, OpensEachSectionByItsKeysInItsPlaceAndReadable) {
    fillTrash();
    model().analyzer()->setScanRoot("/usr");
    open();
    model().banner()->show("Restored 2 item(s).");
    for (const double scale : {1.0, 1.5, 2.0}) {
        setTheme("fontScale", scale);
        for (const bool dark : {false, true}) {
            setTheme("dark", dark);
            int place = 0;
            for (const char* const title : kTitles) {
                SCOPED_TRACE(testing::Message() << title << ' ' << scale << ' ' << dark);
                key(Qt::Key_1 + place++, Qt::ControlModifier);
                EXPECT_NE(find(QAccessible::Pane, title), nullptr);
                finish();
                expectLaidOut();
                expectReadable();
            }
        }
    }
}

TEST_F(ContentViewTest, ListsItsKeys) {
    open();
    for (const double scale : {1.0, 2.0}) {
        setTheme("fontScale", scale);
        key(Qt::Key_F1);
        await([&] { return sees("Ctrl+R, Rescan"); }, "the list");
        expectLaidOut();
        key(Qt::Key_Escape);
        await([&] { return !sees("Ctrl+R, Rescan"); }, "its end");
    }
    key(Qt::Key_Question, Qt::ControlModifier);
    await([&] { return sees("Keyboard shortcuts"); }, "the list");
}

}  // namespace
}  // namespace Brimlo
