#include "BrimloApp/Components/FileKind.h"

#include <gtest/gtest.h>

#include <string>

namespace Brimlo {
namespace {

TEST(FileKindTest, IsToldByTheEntryThenByItsExtension) {
    struct Case {
        std::string name;
        bool isDirectory;
        bool isAggregate;
        FileKind::Case kind;
    };
    const Case cases[] = {
        {"archive.TAR",  false, false, FileKind::archive },
        {"a.tar.gz",     false, false, FileKind::archive },
        {"movie.mp4",    false, false, FileKind::video   },
        {"movie.mp4",    true,  false, FileKind::folder  },
        {"movie.mp4",    false, true,  FileKind::other   },
        {"movie.mp4",    true,  true,  FileKind::other   },
        {"song.Als",     false, false, FileKind::audio   },
        {"raw.cr3",      false, false, FileKind::image   },
        {"lib.a",        false, false, FileKind::code    },
        {"notes.md",     false, false, FileKind::document},
        {"mp4",          false, false, FileKind::other   },
        {".mp4",         false, false, FileKind::other   },
        {"mp4.",         false, false, FileKind::other   },
        {"",             false, false, FileKind::other   },
        {"name.zip ",    false, false, FileKind::other   },
        {"\xff\xfe.zip", false, false, FileKind::archive },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        FileNode node;
        node.name = c.name;
        node.isDirectory = c.isDirectory;
        node.isAggregate = c.isAggregate;
        EXPECT_EQ(FileKind::of(node), c.kind);
    }
}

}  // namespace
}  // namespace Brimlo
