#include "BrimloCore/Cleaner/Cleaner.h"
#include "BrimloCore/Platform/Trash.h"
#include "BrimloCoreTests/Cleaner/CleaningHome.h"
#include "BrimloCoreTests/Cleaner/OwnMounts.h"
#include "BrimloCoreTests/Gate/SafetyOracle.h"
#include "Support/Proof.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

#include <sys/mount.h>
#include <unistd.h>

// A real clean is fired at everything protected, under each name by which the system would lead
// there. So that even "/usr" could go if the gate let it, all of it stands in a system of its own,
// on one file system in memory, which the process has made its root.

namespace Brimlo {
namespace {

namespace fs = std::filesystem;
using Testing::contentOf;
using Testing::exists;
using Testing::words;

struct Shot {
    std::string alias;
    std::string path;
};

class CleanerAliasesTest : public Testing::CleaningHome {
protected:
    static constexpr std::size_t kFirst = 45;
    static constexpr std::size_t kEachOfSo = 40;
    static constexpr const char* kHome = "/home/Jos\u00E9";
    static constexpr const char* kDesk = "/home/Jos\u00E9/desk/";

    /// Makes the fresh root; false where that is not permitted.
    [[nodiscard]] bool enterOwnRoot(bool isHomeLinked) const {
        const std::string root = makeFolder("root");
        if (mount("tmpfs", root.c_str(), "tmpfs", 0, "size=16m") != 0 ||
            mount("/proc", makeFolder("root/proc").c_str(), nullptr, MS_BIND, nullptr) != 0 ||
            chroot(root.c_str()) != 0 || chdir("/") != 0) {
            return false;
        }
        setenv("HOME", kHome, 1);
        if (isHomeLinked) {
            fs::create_directories("/disk/home");
            linked("/disk/home", "/home");
        }
        fs::create_directories(kDesk);
        return !exists("/usr");  // Else it is not ours.
    }

    /// A folder with something in it, or a file, at `path`.
    static void makeKept(const std::string& path) {
        if (isFile(path)) {
            fs::create_directories(fs::path{path}.parent_path());
            std::ofstream{path} << "kept";
        } else {
            fs::create_directories(path + "/kept");
            std::ofstream{path + "/kept/x"} << "kept";
        }
    }

    static bool isFile(const std::string& path) {
        return path.ends_with(".md") || path.ends_with(".json") || path.ends_with("/.env") ||
               path.ends_with("id_rsa");
    }

    static bool isKept(const std::string& path) {
        return contentOf(isFile(path) ? path : path + "/kept/x") == "kept";
    }

    static std::string replaced(std::string text, const std::string& from, const std::string& to) {
        Testing::replaceAll(text, from, to);
        return text;
    }

    /// A folder of `number`'s own on the desk.
    static std::string place(std::size_t number, const std::string& name) {
        const std::string folder = kDesk + std::to_string(number);
        fs::create_directories(folder);
        return folder + "/" + name;
    }

    static std::string bound(const std::string& from, const std::string& to) {
        if (fs::is_directory(from)) {
            fs::create_directories(to);
        } else {
            std::ofstream{to}.put('\n');
        }
        EXPECT_EQ(mount(from.c_str(), to.c_str(), nullptr, MS_BIND, nullptr), 0) << from;
        return to;
    }

    static std::string linked(const std::string& to, const std::string& from) {
        fs::create_symlink(to, from);
        return from;
    }

    /// Spellings of one path.
    static std::vector<Shot> spellings(const std::string& path) {
        const fs::path whole{path};
        const std::string folder = whole.parent_path() == "/" ? "" : whole.parent_path().string();
        const std::string name = whole.filename();
        std::string swapped = path;
        for (char& c : swapped) {
            const bool isLower = std::islower(static_cast<unsigned char>(c)) != 0;
            c = c < 0 ? c : static_cast<char>(isLower ? std::toupper(c) : std::tolower(c));
        }
        const std::string kelvin = replaced(replaced(path, "K", "\u212A"), "k", "\u212A");
        return {
            {"plain", path},
            {"slash at the end", path + "//"},
            {"slashes", replaced(path, "/", "//")},
            {"dots", replaced(path, "/", "/./") + "/."},
            {"missing and up", folder + "/missing/../" + name},
            {"itself and up", path + "/../" + name},
            {"from above", "/../.." + path},
            {"letter case", swapped},
            {"decomposed", replaced(path, "\u00E9", "e\u0301")},
            {"compatible letter", kelvin},
        };
    }

    /// Ways around one path, through links and mounts that are made for it.
    static std::vector<Shot> detours(const std::string& path, std::size_t number) {
        const fs::path whole{path};
        const std::string folder = whole.parent_path();
        const std::string name = "/" + whole.filename().string();
        const auto at = [&](const char* own) { return place(number, own); };
        const std::string link = linked(folder, at("link"));
        const std::string mounted = bound(folder, at("mounted"));
        const std::string second = linked("link", at("second"));
        const std::string relative = linked("../../../.." + folder, at("relative"));
        const std::string up =
            linked(folder + "/../" + whole.parent_path().filename().string(), at("up"));
        const std::string twice = bound(mounted, at("twice"));
        const std::string both = linked(mounted, at("both"));
        const std::string itself = bound(path, at("itself"));
        return {
            {"link",             link + name    },
            {"links in a row",   second + name  },
            {"relative link",    relative + name},
            {"link through up",  up + name      },
            {"mount",            mounted + name },
            {"mount of a mount", twice + name   },
            {"link to a mount",  both + name    },
            {"mounted itself",   itself         },
        };
    }

    /// Paths into a folder whose contents are protected.
    static std::vector<Shot> inside(const std::string& path, std::size_t number) {
        const auto at = [&](const char* own) { return place(number, own); };
        const std::string mounted = bound(path, at("in-mount"));
        const std::string toFolder = linked(path, at("in-link"));
        const std::string toPart = linked(path + "/kept", at("to-part"));
        return {
            {"inside",                  path + "/kept"    },
            {"inside a link",           toFolder + "/kept"},
            {"inside a mount",          mounted + "/kept" },
            {"inside a link to a part", toPart + "/x"     },
        };
    }

    /// Fires one shot, and returns what is wrong with the result.
    std::string fire(const Shot& shot, const std::string& target) {
        const CleanReport report = clean({shot.path});
        std::error_code ignored;
        const bool isTrashEmpty = !fs::exists(Platform::homeTrash(), ignored) ||
                                  fs::is_empty(Platform::homeTrash(), ignored);
        if (!isKept(target) || !isTrashEmpty || report.processed != 0) {
            return "moved";
        }
        // What is a mount itself can't be renamed; the gate need not be the one to say so.
        return report.refused.empty() && shot.alias != "mounted itself" ? "not refused" : "";
    }

    /// Builds everything protected and fires at it; tells tools/prove `what` was tried.
    void fireAtAll(bool isHomeLinked, const char* what);

    std::int64_t fired_ = 0;
    std::int64_t broken_ = 0;

    void fireAll(const std::vector<Shot>& shots, const std::string& target) {
        for (const Shot& shot : shots) {
            const std::string problem = fire(shot, target);
            ++fired_;
            broken_ += problem.empty() ? 0 : 1;
            EXPECT_EQ(problem, "") << shot.alias << ": " << shot.path;
        }
    }
};

TEST_F(CleanerAliasesTest, NothingProtectedGoesByAnyName) {
    fireAtAll(false, "aliases of protected places");
}

TEST_F(CleanerAliasesTest, NothingProtectedGoesFromAHomeBehindALink) {
    fireAtAll(true, "aliases of protected places, in a home behind a link");
}

void CleanerAliasesTest::fireAtAll(bool isHomeLinked, const char* what) {
    Testing::withOwnMounts([&] {
        if (!enterOwnRoot(isHomeLinked)) {
            GTEST_SKIP() << "a root of one's own is not permitted here";
        }
        journal_ = std::make_shared<Journal>(StoragePaths::journal());
        cleaner_ = Cleaner{journal_};
        const std::string home = kHome;
        const Testing::Oracle oracle{home};
        // The rows are hundreds, and those of one kind are judged alike.
        std::set<std::string> targets;
        const std::vector<std::string> all = oracle.places();
        for (std::size_t i = 0; i < all.size(); i += i < kFirst ? 1 : kEachOfSo) {
            targets.insert(all[i]);
        }
        for (const char* file :
             {"/Library/Application Support/Brimlo",
              "/.claude/settings.json",
              "/.codex/auth.json",
              "/a/.env",
              "/a/id_rsa"}) {
            targets.insert(home + file);
        }
        std::erase_if(targets, [&](const std::string& path) {
            return path == "/" || path == home || path == fs::canonical(home) ||
                   path.ends_with("/.codex") || path.ends_with("/.gemini") ||
                   path.ends_with("/.claude") || path.contains("cache");
        });
        std::ranges::for_each(targets, makeKept);
        std::size_t number = 0;
        for (const std::string& target : targets) {
            SCOPED_TRACE(target);
            ++number;
            fireAll(spellings(target), target);
            fireAll(detours(target, number), target);
            const auto reason = oracle.check(target + "/kept/x");
            if (reason && !isFile(target)) {
                fireAll(inside(target, number), target);
            }
            if (!reason && !isFile(target)) {
                // What lies in it may go, but not because a rule's own folder became a link to it.
                const std::string cache = linked(target, place(number, "cache"));
                const Shot shot{"contents of a link", cache + "/kept"};
                fireAll({shot}, target);
            }
            if (reason == Testing::kCredentials && !isFile(target)) {
                // Whoever mounts a part of the system into the home has made it the home's own.
                const std::string part = bound(target + "/kept", place(number, "in-part"));
                const Shot shot{"inside a mount of a part", part + "/x"};
                fireAll({shot}, target);
            }
            // The place is a link by now, and the shot goes to where it leads.
            const std::string real = place(number, "real");
            for (const char* name : {"itself", "in-mount"}) {
                umount2(place(number, name).c_str(), MNT_DETACH);
            }
            fs::rename(target, real);
            linked(real, target);
            if (!isFile(target)) {
                const Shot shot{"the link's target", real};
                fireAll({shot}, target);
            }
            fs::remove(target);
            fs::rename(real, target);
        }
        std::vector<Shot> roots;
        const std::string mountedRoot = bound("/", place(0, "root"));
        const std::string mountedHome = bound(home, place(0, "home"));
        for (const std::string& path : words("/ // /usr/.. /usr/../home/./../")) {
            roots.push_back({"root", path});
        }
        for (const std::string& path : {mountedRoot, mountedHome, home + "/./", "/usr/.." + home}) {
            roots.push_back({"mounted itself", path});
        }
        fireAll(roots, home + "/.ssh");
        // Another name of the folder above the home changes nothing for what lies in it.
        fs::remove_all("/Users");
        linked("/home", "/Users");
        // The gun is loaded: an ordinary file goes by each of these names.
        for (const Shot& shot : spellings(home + "/desk/plain")) {
            std::ofstream{home + "/desk/plain"} << "plain";
            // The rest lead elsewhere: to other names, or into what is no folder.
            const bool isSame = shot.alias == "plain" || shot.alias == "slashes" ||
                                shot.alias == "from above" || shot.alias == "slash at the end";
            EXPECT_EQ(clean({shot.path}).processed, isSame ? 1 : 0) << shot.alias;
        }
        EXPECT_FALSE(fs::is_empty(Platform::homeTrash()));
        EXPECT_GE(fired_, std::ssize(targets) * 12);
        Testing::told(what, fired_, broken_);
    });
}

}  // namespace
}  // namespace Brimlo
