// Subscriptions to change notices: their end with the handle, and changes while being told.

#include "ui/ChangeNotices.h"

#include <gtest/gtest.h>

#include <optional>

namespace zd {
namespace {

TEST(ChangeNotices, GroupSubscribersHearTheirGroupUntilTheHandleEnds) {
    ChangeNotices notices;
    int lists = 0;
    int all = 0;
    Subscription one = notices.subscribe(ViewChange::lists, [&] { ++lists; });
    std::optional<Subscription> every{notices.subscribe([&](ViewChange) { ++all; })};
    notices.announce(ViewChange::lists);
    notices.announce(ViewChange::progress);
    EXPECT_EQ(lists, 1);
    EXPECT_EQ(all, 2);
    every.reset();
    Subscription moved = std::move(one);
    notices.announce(ViewChange::lists);
    EXPECT_EQ(lists, 2);
    EXPECT_EQ(all, 2);
    moved = Subscription();
    notices.announce(ViewChange::lists);
    EXPECT_EQ(lists, 2);
}

TEST(ChangeNotices, ASubscriberMayEndAnotherWhileBeingToldAndOutliveTheNotifier) {
    auto notices = std::make_unique<ChangeNotices>();
    Subscription second;
    int secondCalls = 0;
    Subscription first = notices->subscribe([&](ViewChange) { second.reset(); });
    second = notices->subscribe([&](ViewChange) { ++secondCalls; });
    notices->announce(ViewChange::settings);
    EXPECT_EQ(secondCalls, 0);
    notices.reset();
    first.reset();  // the notifier has gone: nothing to end
}

}  // namespace
}  // namespace zd
