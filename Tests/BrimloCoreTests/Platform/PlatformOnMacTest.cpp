#include "BrimloCore/Gate/Safety.h"
#include "BrimloCore/Platform/CloneFile.h"
#include "BrimloCore/Platform/DirectoryEntry.h"
#include "BrimloCore/Platform/Posix/Descriptor.h"
#include "BrimloCore/Platform/Processes.h"
#include "BrimloCore/Platform/Volume.h"
#include "Support/TempHome.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <cstdlib>
#include <map>

#include <fcntl.h>
#include <unistd.h>

namespace Brimlo {
namespace {

using Platform::EntryDetail;

class PlatformOnMacTest : public Testing::TempHome {};

TEST_F(PlatformOnMacTest, ReadsAFolderAsALookAtEachEntryDoes) {
    write("f/one");
    fill("f/large", 1'000'000);
    ASSERT_EQ(::link(at("f/one").c_str(), at("f/two").c_str()), 0);
    link("f/link", "folder");
    for (int i = 0; i < 5'000; ++i) {
        write("f/folder/" + std::string(200, 'n') + std::to_string(i), "");
    }
    for (const std::string folder : {"f", "f/folder"}) {
        const Platform::Descriptor open{::open(at(folder).c_str(), O_RDONLY | O_DIRECTORY)};
        std::map<std::string, bool> kinds;
        std::size_t count = 0;
        const auto look = [&](const Platform::DirectoryEntry& entry) {
            const auto status = Platform::entryStatus(open.number(), entry.name);
            ASSERT_TRUE(status) << entry.name;
            EXPECT_EQ(entry.isDirectory, status->kind == Platform::EntryStatus::Kind::directory);
            if (!entry.isDirectory) {
                EXPECT_EQ(entry.allocatedBytes, status->allocatedBytes) << entry.name;
                EXPECT_EQ(entry.linkCount, status->linkCount) << entry.name;
                EXPECT_EQ(entry.inode, status->identity.inode) << entry.name;
            }
            ++count;
        };
        EXPECT_TRUE(Platform::readDirectory(open.number(), EntryDetail::allocation, look));
        EXPECT_EQ(lseek(open.number(), 0, SEEK_SET), 0);
        EXPECT_TRUE(
            Platform::readDirectory(open.number(), EntryDetail::kind, [&](const auto& entry) {
                kinds.emplace(entry.name, entry.isDirectory);
            }));
        EXPECT_EQ(count, kinds.size());
        EXPECT_EQ(kinds.size(), folder == "f" ? 5U : 5'000U);
    }
}

TEST_F(PlatformOnMacTest, ClonesAFile) {
    const std::string original = write("original", "content");
    const Platform::Descriptor file{open(original.c_str(), O_RDONLY | O_CLOEXEC)};
    const Platform::Descriptor folder{open(home().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)};
    EXPECT_TRUE(Platform::cloneFile(file.number(), folder.number(), "clone"));
    EXPECT_EQ(Testing::contentOf(at("clone")), "content");
    const auto again = Platform::cloneFile(file.number(), folder.number(), "clone");
    EXPECT_EQ(again.error(), Error::fromSystem(EEXIST));
}

TEST_F(PlatformOnMacTest, TellsWhatTheSystemSays) {
    const auto capacity = Platform::volumeCapacity("/");
    ASSERT_TRUE(capacity);
    EXPECT_GT(capacity->available, 0);
    EXPECT_LT(capacity->available, capacity->total);
    EXPECT_TRUE(capacity->availableForImportantUsage);
    EXPECT_EQ(Platform::volumeCapacity(at("missing")), std::nullopt);
    EXPECT_THAT(Platform::runningAppNames(), testing::Contains("Finder"));
}

TEST_F(PlatformOnMacTest, SpellsPathsAsTheSystemDoes) {
    EXPECT_EQ(Safety::canonical("/private/tmp"), "/tmp");
    EXPECT_EQ(Safety::canonical("/private/etc/hosts"), "/etc/hosts");
    EXPECT_EQ(Safety::canonical("/private/missing"), "/private/missing");
    EXPECT_EQ(Safety::canonical("/privately"), "/privately");
    EXPECT_EQ(Safety::judge("/private/var").refusal, "protected location");
    EXPECT_EQ(Safety::judge(home() + "/x").refusal, std::nullopt) << "in a home below /private";
}

}  // namespace
}  // namespace Brimlo
