#include "BrimloApp/Components/Places.h"

#include "BrimloAppTests/Support/AppTest.h"

#include <gtest/gtest.h>

namespace Brimlo {
namespace {

using PlacesTest = Testing::AppTest;

TEST_F(PlacesTest, NamesTheLastPartOfAPath) {
    EXPECT_EQ(Places::name("/"), "/");
    EXPECT_EQ(Places::name("/home/ada"), "ada");
    EXPECT_EQ(Places::name("/home/ada/"), "ada");
    EXPECT_EQ(Places::name("/home/a # 50%"), "a # 50%");
    EXPECT_EQ(Places::home(), QString::fromStdString(home()));
}

TEST_F(PlacesTest, TakesOnlyFoldersOfThisMachine) {
    const QString folder = Places::home();
    write("file");
    EXPECT_TRUE(Places::isFolder(Places::address(folder)));
    EXPECT_FALSE(Places::isFolder(Places::address(folder + "/file")));
    EXPECT_FALSE(Places::isFolder(Places::address(folder + "/gone")));
    EXPECT_FALSE(Places::isFolder(QUrl{"https://example.com" + folder}));
    EXPECT_FALSE(Places::isFolder(QUrl{}));
}

TEST_F(PlacesTest, GoesFromPathToAddressAndBack) {
    for (const QString& path :
         QStringList{"/", "/tmp/a b", "/tmp/100%25 #1?", QStringLiteral("/tmp/\u00fc\u4e2d")}) {
        EXPECT_EQ(Places::path(Places::address(path)), path);
    }
    EXPECT_EQ(Places::path(QUrl{"https://example.com/tmp"}), "");
}

}  // namespace
}  // namespace Brimlo
