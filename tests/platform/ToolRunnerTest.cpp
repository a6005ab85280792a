// A detached application holds none of this program's descriptors: a caller reading our
// output to its end ($(zephyrdock …), a pipe) sees it end with us, not when the application
// quits.
#include "linux/ToolRunner.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

namespace zd {
namespace {

// True when the pipe's reading end sees its end within the limit: no writer is left.
bool endsSoon(int readEnd) {
    pollfd p{readEnd, POLLIN, 0};
    char byte = 0;
    return poll(&p, 1, 3000) == 1 && read(readEnd, &byte, 1) == 0;
}

TEST(ToolRunner, ADetachedApplicationHoldsNeitherOurOutputNorAnyOtherDescriptor) {
    int output[2], stray[2];
    ASSERT_EQ(pipe(output), 0);
    ASSERT_EQ(pipe(stray), 0);  // inheritable, as descriptors of libraries often are
    const int savedOut = dup(STDOUT_FILENO);
    dup2(output[1], STDOUT_FILENO);
    close(output[1]);
    auto pid = x11::spawnDetached({{"sleep", "30"}, x11::environmentWith({}), ""});
    dup2(savedOut, STDOUT_FILENO);
    close(savedOut);
    close(stray[1]);
    ASSERT_TRUE(pid.hasValue()) << pid.error();
    EXPECT_TRUE(endsSoon(output[0])) << "the application kept our stdout";
    EXPECT_TRUE(endsSoon(stray[0])) << "the application kept a descriptor of ours";
    kill(*pid, SIGKILL);
    close(output[0]);
    close(stray[0]);
}

}  // namespace
}  // namespace zd
