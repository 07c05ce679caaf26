#include "BrimloCore/Docker/DockerClient.h"
#include "BrimloCore/Support/Text.h"
#include "BrimloCoreTests/Cleaner/OwnMounts.h"
#include "BrimloToolTests/ToolTest.h"

#include <gmock/gmock.h>

#include <array>
#include <filesystem>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace Brimlo::Testing {

namespace {

class CleanCommandTest : public ToolTest {
protected:
    const std::string thumbnails = at(".cache/thumbnails/large");
    const std::string chrome = at(".cache/google-chrome/Default/Cache");
    const std::string modules = at("Projects/app/node_modules");

    /// Two safe caches and a project with its dependencies, all long untouched.
    void prepare() const {
        write(".cache/thumbnails/large/a.png", std::string(50'000, 'a'));
        link(".cache/thumbnails/large/latest", "a.png");
        write(".cache/google-chrome/Default/Cache/Cache_Data/f_000001", std::string(9'000, 'f'));
        std::filesystem::permissions(chrome, std::filesystem::perms::owner_all);
        write("Projects/app/package.json", "{}");
        write("Projects/app/node_modules/left-pad/index.js", "module.exports = 1");
        for (const std::string& folder : {thumbnails, chrome, modules}) {
            for (const auto& entry : std::filesystem::recursive_directory_iterator{folder}) {
                age(entry.path().string(), 200);
            }
            age(folder, 200.5);
        }
        age(at("Projects/app/package.json"), 200);
    }

    [[nodiscard]] std::vector<std::vector<std::string>> describe() const {
        return {describeTree(thumbnails), describeTree(chrome), describeTree(modules)};
    }

    /// What a person at a terminal is left with after an answer.
    [[nodiscard]] std::string converse(
        const std::vector<std::string>& arguments, std::string_view reply) const {
        const Platform::Descriptor mine{posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)};
        EXPECT_EQ(grantpt(mine.number()), 0);
        EXPECT_EQ(unlockpt(mine.number()), 0);
        const Platform::Descriptor its{open(ptsname(mine.number()), O_RDWR | O_NOCTTY | O_CLOEXEC)};
        const int terminal = its.number();
        EXPECT_EQ(::write(mine.number(), reply.data(), reply.size()), std::ssize(reply));
        Outcome outcome = start(arguments, {.in = terminal, .out = -1, .err = terminal}).wait();
        EXPECT_EQ(outcome.exitCode, 0);
        return outcome.out;
    }

    /// What a terminal shows of a conversation of these keys.
    [[nodiscard]] static std::string screen(
        const std::vector<std::string>& arguments, std::string_view keys) {
        const Platform::Descriptor mine{posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)};
        EXPECT_EQ(grantpt(mine.number()), 0);
        EXPECT_EQ(unlockpt(mine.number()), 0);
        Platform::Descriptor its{open(ptsname(mine.number()), O_RDWR | O_NOCTTY | O_CLOEXEC)};
        const winsize size{.ws_row = 9, .ws_col = 60, .ws_xpixel = 0, .ws_ypixel = 0};
        EXPECT_EQ(ioctl(its.number(), TIOCSWINSZ, &size), 0);
        EXPECT_EQ(::write(mine.number(), keys.data(), keys.size()), std::ssize(keys));
        const int terminal = its.number();
        Running running = start(arguments, {.in = terminal, .out = terminal, .err = terminal});
        its = {};  // So that the end of the tool ends the reading.
        std::string shown;
        std::array<char, 4096> bytes{};
        for (ssize_t length = 0; (length = read(mine.number(), bytes.data(), bytes.size())) > 0;) {
            shown.append(bytes.data(), static_cast<std::size_t>(length));
        }
        EXPECT_EQ(running.wait().exitCode, 0);
        return shown;
    }
};

/// The text of each element, or of this field of it.
std::vector<std::string> texts(const Json::Value& list, std::string_view key = "") {
    std::vector<std::string> result;
    for (const Json::Value& element : list.as_array()) {
        const Json::Value& text = key.empty() ? element : element.at(key);
        result.emplace_back(std::string_view{text.as_string()});
    }
    return result;
}

TEST_F(CleanCommandTest, GoesTheWholeRoadAndBack) {
    prepare();
    const auto before = describe();

    EXPECT_THAT(
        texts(answer({"suggest"}), "id"),
        testing::UnorderedElementsAre(
            "photos.thumbnails", "browser.chrome", "artifact.node_modules"));

    const Outcome dry = run({"clean", "--safe", "--dry-run"});
    EXPECT_EQ(dry.exitCode, 0);
    EXPECT_TRUE(dry.out.ends_with("2 items would go to the Trash. Nothing was moved.\n"));
    EXPECT_EQ(describe(), before);
    EXPECT_EQ(Json::compact(answer({"history"})), "[]");

    const Json::Value report = answer({"clean", "--safe", "--yes"});
    EXPECT_EQ(report.at("processed").as_int64(), 2);
    EXPECT_EQ(report.at("movedToTrashBytes"), report.at("plan").at("totalBytes"));
    EXPECT_THAT(
        texts(report.at("plan").at("items"), "path"), testing::ElementsAre(thumbnails, chrome));
    EXPECT_FALSE(exists(thumbnails) || exists(chrome));
    EXPECT_EQ(describeTree(modules), before[2]);

    const Json::Value history = answer({"history"});
    const auto ids = texts(report.at("journalIDs"));
    EXPECT_THAT(texts(history, "id"), testing::UnorderedElementsAreArray(ids));
    EXPECT_THAT(texts(history, "batchID"), testing::Each(texts(history, "batchID").front()));

    EXPECT_EQ(answer({"undo", "--last"}).at("restored").as_array().size(), 2);
    EXPECT_EQ(describe(), before);
    EXPECT_EQ(answer({"history"}).at(0).at("undone").as_bool(), true);
    EXPECT_THAT(describeTree(at(".local/share/Trash/info")), testing::SizeIs(1));
}

TEST_F(CleanCommandTest, OffersAListToTickOnATerminal) {
    prepare();
    const auto before = describe();
    setenv("TERM", "xterm", 1);
    EXPECT_TRUE(screen({}, "q").ends_with("Nothing was moved.\r\n"));
    const std::string refused = screen({"clean"}, "\nn\n");
    EXPECT_TRUE(refused.contains("[x]") && refused.contains("Move 3 items, ")) << refused;
    EXPECT_EQ(describe(), before);
    // The first row is the largest suggestion.
    EXPECT_TRUE(screen({}, " \ny\n").contains("Moved 2 items to the Trash, "));
    EXPECT_TRUE(exists(thumbnails) && !exists(chrome) && !exists(modules));
}

TEST_F(CleanCommandTest, TakesWhatWasChosen) {
    using Texts = std::vector<std::string>;
    const std::pair<Texts, Texts> cases[] = {
        {{"--safe"},                                                                 {thumbnails, chrome}         },
        {{"--preselected"},                                                          {thumbnails, modules, chrome}},
        {{"--rule", "photos.thumbnails", "--rule", "artifact.node_modules"},         {thumbnails, modules}        },
        {{".cache/thumbnails/large", "~/.cache/thumbnails/large/a.png", thumbnails}, {thumbnails}                 },
    };
    prepare();
    for (auto [arguments, paths] : cases) {
        SCOPED_TRACE(testing::PrintToString(arguments));
        arguments.insert(arguments.begin(), {"clean", "--dry-run"});
        EXPECT_EQ(texts(answer(arguments).at("plan").at("items"), "path"), paths);
    }
}

TEST_F(CleanCommandTest, ReadsATypedPathAsTheSystemDoes) {
    write("here/x");
    write("elsewhere/x");
    link("here/l", makeFolder("elsewhere/sub"));
    EXPECT_EQ(run({"clean", "here/l/../x", "--yes"}).exitCode, 0);
    EXPECT_TRUE(exists(at("here/x")) && !exists(at("elsewhere/x")));
    EXPECT_EQ(run({"clean", "~/here/l/", "--yes"}).exitCode, 0);
    EXPECT_TRUE(std::filesystem::is_symlink(at("here/l")) && !exists(at("elsewhere/sub")));
    EXPECT_EQ(run({"clean", "here/./l", "--yes"}).exitCode, 0);
    EXPECT_EQ(trashed(), (std::vector<std::string>{"l", "sub", "x"}));
}

TEST_F(CleanCommandTest, CleansAHomeBehindALink) {
    const std::string real = at("var/home/u");
    write("var/home/u/.cache/thumbnails/large/a.png", std::string(50'000, 'a'));
    write("var/home/u/file");
    link("home", "var/home");
    setenv("HOME", at("home/u").c_str(), 1);
    EXPECT_EQ(answer({"suggest"}).as_array().size(), 1U);
    const Outcome both = run({"clean", "~/file", real + "/.cache/thumbnails/large/a.png", "--yes"});
    EXPECT_EQ(both.exitCode, 0) << both.err;
    EXPECT_FALSE(exists(real + "/file") || exists(real + "/.cache/thumbnails/large/a.png"));
    EXPECT_GT(answer({"trash", "size"}).at("bytes").to_number<std::int64_t>(), 49'999);
    EXPECT_EQ(run({"undo", "--last"}).exitCode, 0);
    EXPECT_TRUE(exists(real + "/file") && exists(real + "/.cache/thumbnails/large/a.png"));
    EXPECT_EQ(run({"clean", "--safe", "--yes"}).exitCode, 0);
    EXPECT_FALSE(exists(real + "/.cache/thumbnails/large"));
}

TEST_F(CleanCommandTest, ReportsWhatDidNotGoAndMovesTheRest) {
    write("folder/inside");
    link("link", "folder");
    EXPECT_THAT(
        run({"clean", "--dry-run", "/", "missing", "link"}).out,
        testing::HasSubstr(
            "refused     /: protected location\nfailed      ~/missing: no longer exists\n"
            "1 item would go to the Trash."));
    const Json::Value report = answer({"clean", "--yes", "/", "/etc/passwd", "missing", "link"}, 1);
    EXPECT_EQ(
        Json::compact(report.at("refused")),
        R"(["/: protected location","/etc/passwd: outside user-owned locations"])");
    EXPECT_EQ(
        Json::compact(report.at("failures")), R"([")" + at("missing") + R"(: no longer exists"])");
    EXPECT_EQ(report.at("processed").as_int64(), 1);
    EXPECT_THAT(trashed(), testing::ElementsAre("link"));
    EXPECT_TRUE(exists(at("folder/inside")));
    EXPECT_THAT(run({"clean", "--yes", "/etc"}).out, testing::EndsWith("Nothing was cleaned.\n"));
}

TEST_F(CleanCommandTest, SaysWhatTheJournalLacks) {
    write(support("journal.json.lock"), "");
    ASSERT_EQ(mkfifo(at(support("journal.json")).c_str(), 0600), 0);
    write("file");
    const Outcome cleaned = run({"clean", "file", "--yes"});
    EXPECT_EQ(cleaned.exitCode, 1);
    EXPECT_THAT(
        cleaned.out,
        testing::EndsWith(
            "unrecorded  ~/file: it is in the Trash and the journal lacks it: Invalid argument\n"
            "Moved 1 item to the Trash, 4 KB. The space is free once the Trash is emptied.\n"
            "1 item could not be recorded. \"brimlo undo\" does not know them; only the desktop's "
            "own Trash can put them back.\n"));
    const Outcome unreadable{1, "", "brimlo: The journal can't be read: Invalid argument.\n"};
    EXPECT_EQ(run({"undo", "--last"}), unreadable);
    EXPECT_EQ(run({"history"}), unreadable);
    EXPECT_EQ(run({"trash", "purge"}).exitCode, 1);
    EXPECT_EQ(run({"autoclean", "--force", "--execute"}).exitCode, 1);
}

TEST_F(CleanCommandTest, CleansUnattended) {
    prepare();
    EXPECT_TRUE(run({"autoclean", "--execute"}).out.starts_with("Auto-clean is off. "));
    EXPECT_THAT(
        run({"autoclean", "--force"}).out,
        testing::HasSubstr("Trash. Nothing was moved.\nAuto-clean would remove "));
    const Json::Value done = answer({"autoclean", "--execute", "--force"});
    EXPECT_THAT(texts(done.at("planned"), "path"), testing::IsSupersetOf({modules, chrome}));
    EXPECT_EQ(done.at("report").at("processed"), done.at("planned").as_array().size());
    EXPECT_FALSE(exists(chrome) || exists(modules));
    EXPECT_TRUE(run({"autoclean", "--force"}).out.starts_with("Auto-clean found nothing "));
    std::filesystem::remove_all(thumbnails);
    prepare();
    const std::string gdbus = write("bin/gdbus", "#!/bin/sh\necho \"$@\" >> \"$HOME/notices\"\n");
    chmod(gdbus.c_str(), 0700);
    setenv("PATH", (at("bin") + ":/usr/bin:/bin").c_str(), 1);
    EXPECT_EQ(run({"autoclean", "--execute", "--force"}).exitCode, 0);
    EXPECT_THAT(
        contentOf(at("notices")),
        testing::ContainsRegex(
            "Notify .* Auto-clean moved .* to the Trash\\. The History of Brimlo"));
}

TEST_F(CleanCommandTest, AsksAPersonAtATerminal) {
    write("file");
    EXPECT_TRUE(converse({"clean", "file"}, "n\n").ends_with("Nothing was moved.\n"));
    EXPECT_TRUE(converse({"clean", "file"}, "\n").ends_with("Nothing was moved.\n"));
    EXPECT_TRUE(exists(at("file")));
    EXPECT_TRUE(converse({"clean", "file"}, "yes\n").contains("Moved 1 item to the Trash"));
    EXPECT_THAT(trashed(), testing::ElementsAre("file"));
    EXPECT_EQ(converse({"trash", "empty"}, "no\n"), "Nothing was deleted.\n");
    EXPECT_THAT(trashed(), testing::ElementsAre("file"));
}

TEST_F(CleanCommandTest, RemovesDockersObjectsByTheirNames) {
    const std::string docker = write(
        ".orbstack/bin/docker",
        R"(#!/bin/sh
case "$*" in
    'system df -v --format json') echo '{"Images":[{"ID":"sha256:ab12","Repository":"shop","Tag":"3",
        "Containers":"0","Size":"5MB","UniqueSize":"5MB"}]}';;
    rmi*) touch "$HOME/removed";;
esac
)");
    std::filesystem::permissions(docker, std::filesystem::perms::owner_all);
    withOwnMounts([&] {
        const std::string tool = DockerClient::binary().value_or(docker);
        if (tool != docker && mount(docker.c_str(), tool.c_str(), "", MS_BIND, nullptr) != 0) {
            GTEST_SKIP() << "this machine's Docker can't be hidden";
        }
        const std::string image = "docker:image:sha256:ab12";
        const Outcome dry = run({"clean", image, "--dry-run"});
        EXPECT_TRUE(dry.out.contains("Docker image shop:3 (ab12)  docker.images-unused  for good"))
            << dry.out;
        EXPECT_TRUE(dry.out.contains("1 item (5 MB) goes for good and cannot be put back."));
        EXPECT_FALSE(exists(at("removed")));
        const Outcome unknown = run({"clean", "docker:image:x", image, "--yes"});
        EXPECT_EQ(unknown.exitCode, 1);
        EXPECT_EQ(unknown.err, "brimlo: Docker lists nothing unused as \"docker:image:x\".\n");
        EXPECT_FALSE(exists(at("removed")));
        const Outcome gone = run({"clean", image, "--yes"});
        EXPECT_EQ(gone.exitCode, 0);
        EXPECT_TRUE(gone.out.contains("for good    Docker image shop:3 (ab12)\n")) << gone.out;
        EXPECT_TRUE(exists(at("removed")));
        EXPECT_TRUE(run({"history"}).out.contains("Docker image ab12\n"));
    });
}

}  // namespace

}  // namespace Brimlo::Testing
