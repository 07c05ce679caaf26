#include "BrimloApp/Shell/WindowRequest.h"

#include "BrimloApp/Analyzer/Analyzer.h"
#include "BrimloApp/Shell/Shown.h"
#include "BrimloAppTests/Support/ModelTest.h"

namespace Brimlo {
namespace {

using WindowRequestTest = Testing::ModelTest;

TEST_F(WindowRequestTest, UnderstandsWordsAndOpensScreensOnly) {
    const QString folder = fromPath(makeFolder("a b%20"));
    const QString file = fromPath(write("file"));
    const struct {
        QStringList words;
        QString fault;
        Section section;
        QString root;  ///< Of the scan that began.
    } cases[] = {
        {{},                  "",                                       Section::Rules,    ""    },
        {{"--show", "Clean"}, "",                                       Section::Clean,    ""    },
        {{folder},            "",                                       Section::Analyzer, folder},
        {{file},              "\"" + file + "\" is not a folder.",      Section::Rules,    ""    },
        {{"--show", "Bin"},
         "Give a folder, or --show with Analyze, Clean or Duplicates.", Section::Rules,
         ""                                                                                      },
        {{folder, folder},
         "Give a folder, or --show with Analyze, Clean or Duplicates.", Section::Rules,
         ""                                                                                      },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.words.join(' ').toStdString());
        model().setSection(Section::Rules);
        const auto request = WindowRequest::ofWords(c.words);
        EXPECT_EQ(request ? QString{} : request.error(), c.fault);
        if (request) {
            request->meet(model());
        }
        EXPECT_EQ(model().section(), c.section);
        EXPECT_EQ(model().analyzer()->isScanning(), !c.root.isEmpty());
        if (!c.root.isEmpty()) {
            EXPECT_EQ(model().analyzer()->scanRootText(), c.root);
            finish();
        }
    }
    WindowRequest{.folder = QUrl::fromLocalFile(file), .section = {}, .token = {}}.meet(model());
    EXPECT_FALSE(model().analyzer()->isScanning());
    EXPECT_EQ(model().banner()->text(), "What was to be opened is not a folder.");
}

}  // namespace
}  // namespace Brimlo
