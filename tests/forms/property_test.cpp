#include "forms/property.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace tessarel::forms {
namespace {

using Values = std::vector<int>;

TEST(Property, ReplaysItsValueAtOnceAndTellsEachNewOne) {
    Property<int> property{3};
    Values seen;
    const auto subscription = property.onChange([&seen](int value) { seen.push_back(value); });
    property = 4;
    property.set(5);
    EXPECT_EQ(seen, (Values{3, 4, 5}));
    EXPECT_EQ(property.get(), 5);
}

TEST(Property, AnEqualValueIsNoChange) {
    Property<std::string> property{"a"};
    int calls = 0;
    const auto subscription = property.onChange([&calls](const std::string&) { ++calls; });
    property = std::string("a");
    EXPECT_EQ(calls, 1);
}

TEST(Property, AfterItsSubscriptionHasGoneAHandlerIsNotCalled) {
    Property<int> property;
    Values seen;
    {
        const auto subscription = property.onChange([&seen](int value) { seen.push_back(value); });
        property = 1;
    }
    property = 2;
    EXPECT_EQ(seen, (Values{0, 1}));
}

TEST(Property, ASubscriptionMayOutliveItsProperty) {
    Subscription subscription;
    {
        Property<int> property;
        subscription = property.onChange([](int) {});
    }
    subscription = Subscription();
    SUCCEED();
}

TEST(Property, AHandlerMayDetachItselfWhileItRuns) {
    Property<int> property;
    Subscription subscription;
    int calls = 0;
    subscription = property.onChange([&](int value) {
        ++calls;
        if (value > 0) {
            subscription = Subscription();
        }
    });
    property = 1;
    property = 2;
    EXPECT_EQ(calls, 2);
}

TEST(Property, AHandlerMayDetachAnotherBeforeItsTurn) {
    Property<int> property;
    std::optional<Subscription> second;
    int secondCalls = 0;
    const auto first = property.onChange([&](int value) {
        if (value > 0) {
            second.reset();
        }
    });
    second = property.onChange([&secondCalls](int) { ++secondCalls; });
    property = 1;
    EXPECT_EQ(secondCalls, 1);
}

TEST(Property, AHandlerMaySetThePropertyAndAllEndOnTheLastValue) {
    Property<int> property;
    int last = -1;
    const auto first = property.onChange([&property](int value) {
        if (value == 1) {
            property = 2;
        }
    });
    const auto second = property.onChange([&last](int value) { last = value; });
    property = 1;
    EXPECT_EQ(last, 2);
}

TEST(Property, AHandlerMayAttachAnother) {
    Property<int> property;
    std::vector<Subscription> later;
    Values seen;
    const auto first = property.onChange([&](int value) {
        if (value == 1) {
            later.push_back(property.onChange([&seen](int v) { seen.push_back(v); }));
        }
    });
    property = 1;
    property = 2;
    EXPECT_EQ(seen, (Values{1, 2}));
}

}  // namespace
}  // namespace tessarel::forms
