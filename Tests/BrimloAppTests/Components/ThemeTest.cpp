#include "BrimloAppTests/Support/WindowTest.h"
#include "BrimloCoreTests/Support/Words.h"

#include <QtGui/QColor>

namespace Brimlo {
namespace {

using ThemeTest = Testing::WindowTest;

TEST_F(ThemeTest, WordsStandOutFromEveryGround) {
    open();
    ASSERT_NEAR(Testing::LayoutAudit::contrast(Qt::white, Qt::black), 21, 0.01);
    const auto contrast = [this](const char* ink, const char* ground) {
        return Testing::LayoutAudit::contrast(
            theme(ink).value<QColor>(), theme(ground).value<QColor>());
    };
    const auto inks =
        Testing::words("text secondaryText accentText safeText rebuildText reviewText infoText");
    for (const bool dark : {false, true}) {
        for (const bool high : {false, true}) {
            for (const char* accent : {"", "#1f6f8b", "#f5c211", "#000000", "#ffffff", "#3584e4"}) {
                SCOPED_TRACE(testing::Message() << dark << high << accent);
                setTheme("dark", dark);
                setTheme("highContrast", high);
                setTheme("accentColor", QColor{accent});
                EXPECT_GE(contrast("inkOnAccent", "accent"), 4.5);
                for (const char* ground : {"window", "sidebar", "card", "popup", "field"}) {
                    for (const std::string& ink : inks) {
                        EXPECT_GE(contrast(ink.c_str(), ground), 4.5) << ink << " on " << ground;
                    }
                }
            }
        }
    }
}

}  // namespace
}  // namespace Brimlo
