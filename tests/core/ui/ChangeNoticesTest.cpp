// Subscriptions to change notices: their end with the handle, and changes while being told.

#include "ui/ChangeNotices.h"

#include <gtest/gtest.h>

namespace zd {
namespace {

TEST(ChangeNotices, HeardUntilTheHandleEndsEvenWhenEndedWhileBeingTold) {
    auto notices = std::make_unique<ChangeNotices>();
    int lists = 0;
    int all = 0;
    Subscription second;
    Subscription first = notices->subscribe(ViewChange::lists, [&] {
        ++lists;
        second.reset();  // the other one isn't called after this
    });
    second = notices->subscribe([&](ViewChange) { ++all; });
    notices->announce(ViewChange::progress);
    notices->announce(ViewChange::lists);
    notices->announce(ViewChange::lists);
    EXPECT_EQ(lists, 2);
    EXPECT_EQ(all, 1);
    Subscription moved = std::move(first);
    notices.reset();  // the handle outlives its notifier
}

}  // namespace
}  // namespace zd
