#include "BrimloCore/Docker/DockerClient.h"

#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/DiskScanner/DiskScanner.h"
#include "BrimloCore/SuggestionEngine/SuggestionEngine.h"
#include "BrimloCore/Support/StoragePaths.h"
#include "Support/TempHome.h"

#include <algorithm>
#include <filesystem>

namespace Brimlo {
namespace {

using Texts = std::vector<std::string>;

/// A home folder with a script in the place of Docker's tool, which notes its calls.
class DockerClientTest : public Testing::TempHome {
protected:
    void install(const std::string& script) const {
        write("docker", "#!/bin/sh\necho \"$*\" >> '" + at("calls") + "'\n" + script + "\n");
        std::filesystem::permissions(at("docker"), std::filesystem::perms::owner_all);
    }

    /// An engine whose two accounts of its usage are what these commands print.
    void installEngine(const std::string& summary, const std::string& objects) const {
        const std::string context = "'context show') echo ' desktop-linux ';;\ninfo*) echo 28;;\n";
        const std::string usage = "'system df --format {{json .}}')\n" + summary +
                                  ";;\n'system df -v --format json')\n" + objects + ";;\n";
        install("case \"$*\" in " + context + usage + "*) exit 9;; esac");
    }

    [[nodiscard]] std::string calls() const { return Testing::contentOf(at("calls")); }

    /// Before the tool a path where nothing is, a folder, and a file that can't be run.
    [[nodiscard]] DockerClient::Places places() const {
        return {at("missing"), home(), at("calls"), at("docker")};
    }

    [[nodiscard]] std::vector<Suggestion> offered(SuggestionOptions options = {}) const {
        options.docker = places();
        return SuggestionEngine::generate(options);
    }

    const std::string brief = "echo '{\"Type\":\"Images\"}'";
    const std::string full = "cat '" BRIMLO_DOCKER_USAGE "'";
};

TEST_F(DockerClientTest, RunsTheFirstToolThatCanBeRun) {
    const DockerClient::Places usual = DockerClient::usualPlaces();
    EXPECT_EQ(usual.at(0), "/usr/local/bin/docker");
    EXPECT_EQ(usual.at(2), at(".orbstack/bin/docker"));
    write("calls", "");
    EXPECT_EQ(DockerClient::snapshot(places()), DockerSnapshot{.error = "Docker CLI not found."});
    install("printf 'a\\377'; echo b >&2; exit 3");
    EXPECT_EQ(DockerClient::run({}, 5, places()), (DockerClient::Result{3, "a\uFFFD", "b\n"}));
    install("echo a; exec sleep 30");
    EXPECT_EQ(
        DockerClient::run({}, 0.2, places()),
        (DockerClient::Result{-1, "", "Docker took too long"}));
}

TEST_F(DockerClientTest, TellsWhatDockerHoldsAndWhatWentWrong) {
    const std::string old = "Could not read Docker usage (needs Docker 25 or newer).";
    const std::string conflict = "echo the verbose and the format options conflict >&2; exit 1";
    const std::string bulk = "; head -c 3000000 /dev/zero | tr '\\0' ' '";
    const struct {
        const char* name;
        std::string brief;
        std::string full;
        std::size_t rows;
        std::size_t objects;
        std::optional<std::string> error;
    } cases[] = {
        {"current",   brief,              full,                  1, 11, {}                                                     },
        {"in bulk",   brief + bulk,       full + bulk,           1, 11, {}                                                     },
        {"before 25", brief,              conflict,              1, 0,  old                                                    },
        {"dies late", brief + "; exit 1", full + "; kill $$",    1, 0,  old                                                    },
        {"complains", "echo garbage",     full + "; echo a >&2", 0, 11, {}                                                     },
        {"floods",    brief,              "yes",                 1, 0,  "Could not read Docker usage: Docker printed too much."},
        {"a list",    brief,              "echo []",             1, 0,  "Unexpected Docker output: not an object"              },
    };
    const std::string disk = write(".orbstack/data/d.img");
    std::filesystem::resize_file(disk, 1'000'000);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        installEngine(c.brief, c.full);
        const DockerSnapshot snapshot = DockerClient::snapshot(places());
        EXPECT_TRUE(snapshot.available);
        EXPECT_EQ(snapshot.context, "desktop-linux");
        EXPECT_EQ(snapshot.error, c.error);
        EXPECT_EQ(snapshot.summary.size(), c.rows);
        EXPECT_EQ(snapshot.objects.size(), c.objects);
    }
    // No daemon: its disk is told of, and nothing more is asked.
    install("echo c; exit 1");
    const DockerSnapshot stopped{
        .error = "Docker is not running. Start Docker Desktop or OrbStack, then rescan.",
        .vmDisks = {{disk, DiskScanner::quickSize(disk), 1'000'000, "OrbStack"}},
    };
    write("calls", "");
    EXPECT_EQ(DockerClient::snapshot(places()), stopped);
    EXPECT_EQ(calls(), "context show\ninfo --format {{.ServerVersion}}\n");
    install("echo 'permission denied while trying to connect to the socket' >&2; exit 1");
    const DockerSnapshot refused = DockerClient::snapshot(places());
    EXPECT_FALSE(refused.available);
    EXPECT_EQ(refused.error, "Docker refuses this user: permission denied.");
    install("yes");
    EXPECT_EQ(
        DockerClient::snapshot(places()).error, "Docker does not answer: Docker printed too much.");
}

TEST_F(DockerClientTest, RemovesByTheToolAndWithoutForce) {
    const std::string several = "image is referenced in multiple repositories";
    const std::string fail = "{ echo " + several + " >&2; exit 1; }";
    const std::string no = "{ echo no >&2; exit 1; }; ";
    const struct {
        std::string path;
        std::string script;
        std::optional<std::string> reason;
        std::string calls;
    } cases[] = {
        {"docker:image:sha256:a", "",                               {},                                  "rmi sha256:a\n"       },
        {"docker:container:9f3c", "",                               {},                                  "rm 9f3c\n"            },
        {"docker:buildcache:x",   "",                               {},                                  "builder prune -a -f\n"},
        {"docker:volume:x",       "echo ' \nused\n\t' >&2; exit 1", "used",                              "volume rm x\n"        },
        {"docker:image:x",        "[ \"$2\" = -f ] || " + fail,     {},                                  "rmi x\nrmi -f x\n"    },
        {"docker:image:x",        "[ \"$2\" = x ] || " + no + fail, "no",                                "rmi x\nrmi -f x\n"    },
        {"docker:image:x",        "rm \"$0\"; " + fail,             several,                             "rmi x\n"              },
        {"docker:container:x",    fail,                             several,                             "rm x\n"               },
        {"docker:container:x",    "exit 1",                         "Docker refused and gave no reason", "rm x\n"               },
        {"docker:network:x",      "",                               "unknown Docker item kind",          ""                     },
    };
    for (const auto& c : cases) {
        write("calls", "");
        install(c.script);
        EXPECT_EQ(DockerClient::remove(c.path, places()), c.reason) << c.path + " " + c.script;
        EXPECT_EQ(calls(), c.calls);
    }
    for (const char* path : {"docker:volume", "docker:volume:", "docker:rmi:-f", "x:volume:x"}) {
        EXPECT_EQ(DockerClient::remove(path, places()), "not a Docker item") << path;
    }
    EXPECT_EQ(DockerClient::remove("docker:volume:x", {}), "Docker CLI unavailable");
}

TEST_F(DockerClientTest, OffersItsObjectsBesideTheFiles) {
    installEngine(brief, full);
    const std::vector<Suggestion> all = offered();
    Texts lines;
    for (const Suggestion& suggestion : all) {
        std::string& line = lines.emplace_back(suggestion.id);
        line += " " + std::to_string(suggestion.totalSize());
        for (const SuggestionItem& item : suggestion.items) {
            const bool isTicked = suggestion.preselectedPaths.contains(item.path);
            line += (isTicked ? " *" : " -") + item.path.substr(item.path.find(':', 7) + 1);
        }
    }
    const Texts expected{
        "docker.volumes-orphan 2000000000 -0123456789abcdef -short -pg",
        "docker.images-dangling 120002000 *sha256:0123456789abcdef *sha256:sha256:f",
        "docker.images-unused 16000 -sha256:f -sha256:e",
        "docker.build-cache 7000 *all",
        "docker.containers-stopped 63 -9f3c -b -c",
    };
    EXPECT_EQ(lines, expected);
    const Suggestion& cache = all.at(3);
    EXPECT_TRUE(cache.regenerates.ends_with("`. Removed permanently through Docker (no Trash)."));
    EXPECT_EQ(offered({.personas = std::set{Persona::developer}}).size(), 5U);
    installEngine(brief, "echo '{\"Containers\":[{\"ID\":\"a\",\"State\":\"dead\"}]}'");
    EXPECT_EQ(offered().size(), 0U) << "nothing to gain";
    write("calls", "");
    EXPECT_EQ(offered({.personas = std::set{Persona::video}}).size(), 0U);
    EXPECT_EQ(offered({.includeDocker = false}).size(), 0U);
    EXPECT_EQ(calls(), "");
}

TEST_F(DockerClientTest, TakesPartInACleanButNotInTheTrash) {
    install("case $* in *gone) echo No such volume >&2; exit 1;; esac");
    const auto journal = std::make_shared<Journal>(StoragePaths::journal());
    Cleaner cleaner{journal, places()};
    const Texts paths{"docker:volume:a", "docker:volume:gone", write("cache/file")};
    const CleanItem last{paths[2], 7, {}, {}};
    const CleanPlan plan{
        std::vector{
                    CleanItem{paths[0], 5, "rule", {}, "shop"}, CleanItem{paths[1], 6, {}, {}}, last}
    };
    std::vector<CleanItem> told;
    const CleanOptions note{.progress = [&](const CleanItem& item) { told.push_back(item); }};
    EXPECT_EQ(cleaner.execute(plan, DisposalMode::trash, true, note), CleanReport{.processed = 3});
    EXPECT_EQ(told, plan.items()) << "with its name";
    EXPECT_EQ(calls(), "");

    CleanReport report = cleaner.execute(plan, DisposalMode::trash, false, note);
    EXPECT_EQ(calls(), "volume rm a\nvolume rm gone\n");
    std::vector<JournalEntry> entries = journal->entries().value();
    ASSERT_EQ(entries.size(), 2U);
    std::ranges::sort(entries, {}, &JournalEntry::size);
    const std::vector<Uuid> ids{entries[0].id, entries[1].id};
    const CleanItem& first = plan.items().front();
    EXPECT_EQ(
        report,
        (CleanReport{7, 5, {{paths[1], "No such volume"}}, {}, {}, {}, {first}, ids, 2, {}}));
    EXPECT_TRUE(report.canUndo() && !report.canUndoAll());
    const JournalEntry& gone = entries[0];
    EXPECT_EQ(gone.ruleID, "rule");
    EXPECT_EQ(gone.batchID, entries[1].batchID);
    EXPECT_FALSE(gone.trashPath || gone.trashID || gone.isRestorable());
    EXPECT_EQ(cleaner.undo({gone.id}).restored, std::vector<std::string>{});
}

}  // namespace
}  // namespace Brimlo
