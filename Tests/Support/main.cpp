#include <gmock/gmock.h>

#include <cstdlib>
#include <string>

#include <unistd.h>

/// Points `HOME` at an empty folder before any test runs: one that forgets its fixture finds
/// nothing to harm. Where Docker is installed, its tool finds no daemon either.
int main(int argc, char** argv) {
    std::string empty = "/tmp/brimlo-empty-home-XXXXXX";
    if (mkdtemp(empty.data()) == nullptr) {
        return 1;
    }
    setenv("HOME", empty.c_str(), 1);
    setenv("CFFIXED_USER_HOME", empty.c_str(), 1);  // What macOS calls it.
    setenv("DOCKER_HOST", "unix:///nowhere/docker.sock", 1);
    testing::InitGoogleMock(&argc, argv);
    const int result = RUN_ALL_TESTS();
    rmdir(empty.c_str());
    return result;
}
