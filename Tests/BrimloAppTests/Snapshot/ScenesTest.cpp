#include "BrimloApp/Snapshot/Scenes.h"

#include "BrimloApp/Snapshot/CannedState.h"
#include "BrimloApp/Snapshot/Stage.h"
#include "BrimloAppTests/Support/AppTest.h"
#include "BrimloAppTests/Support/LayoutAudit.h"

#include <gmock/gmock.h>

namespace Brimlo {
namespace {

using ScenesTest = Testing::AppTest;

TEST_F(ScenesTest, AreLaidOutInEachSizeOfTextAndWindow) {
    using namespace Testing::LayoutAudit;
    CannedState::furnishHome();
    for (const Snapshot::Scene& scene : Snapshot::allScenes()) {
        Stage stage;
        ASSERT_TRUE(stage.isOpen() && scene.set(stage)) << scene.name.toStdString();
        for (const QSize size : {
                 QSize{1000, 660 },
                 QSize{1600, 1000}
        }) {
            for (const double scale : {1.0, 1.5, 2.0}) {
                SCOPED_TRACE(
                    testing::Message()
                    << scene.name.toStdString() << ' ' << size.width() << ' ' << scale);
                QQuickWindow& window = stage.dress(Stage::Look::light, size, scale);
                EXPECT_THAT(
                    lasting(window, [&] { return misplaced(window, Elision::ofPaths); }),
                    testing::IsEmpty());
            }
        }
    }
}

}  // namespace
}  // namespace Brimlo
