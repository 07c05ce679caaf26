#pragma once

#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include <grp.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Brimlo::Testing {

constexpr int kSkipped = 77;
constexpr uid_t kNobody = 65534;

/// Runs the rest of a test in a child process. Its failures are the test's, and when it skips,
/// the test is skipped. Call it last.
inline void inChild(const std::function<void()>& body) {
    std::fflush(nullptr);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        body();
        std::fflush(nullptr);
        const auto& test = *testing::UnitTest::GetInstance()->current_test_info()->result();
        _exit(test.Skipped() ? kSkipped : test.Failed() ? 1 : 0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    if (WIFEXITED(status) && WEXITSTATUS(status) == kSkipped) {
        GTEST_SKIP() << "for the reason above";
    }
    EXPECT_TRUE(WIFEXITED(status)) << "killed by signal " << WTERMSIG(status);
    EXPECT_EQ(WEXITSTATUS(status), 0) << "the child process has failures, see above";
}

/// Runs `work` in so many processes at once, each with its number, and waits for them.
inline void inProcesses(int count, const std::function<void(int)>& work) {
    std::vector<pid_t> children;
    for (int number = 0; number < count; ++number) {
        children.push_back(fork());
        if (children.back() == 0) {
            work(number);
            _exit(0);
        }
    }
    for (const pid_t child : children) {
        int status = -1;
        waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
}

/// Runs the rest of a test as a user whom permissions bind, to whom `home` is given.
inline void asOrdinaryUser(const std::string& home, const std::function<void()>& body) {
    inChild([&] {
        if (geteuid() == 0) {
            ASSERT_EQ(chown(home.c_str(), kNobody, kNobody), 0);
            ASSERT_EQ(setgroups(0, nullptr), 0);
            ASSERT_EQ(setgid(kNobody), 0);
            ASSERT_EQ(setuid(kNobody), 0);
        }
        body();
    });
}

}  // namespace Brimlo::Testing
