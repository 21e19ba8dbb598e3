#include <gtest/gtest.h>

#include <bit>
#include <cstdint>
#include <limits>
#include <memory>
#include <stdexcept>
#include <vector>

#include "zul/clustering.h"

namespace zul::dax::types {
namespace {

using Doubles = std::unique_ptr<IVector<double>>;

TEST(Vector, RefusesLengthsThatNoVectorHas) {
    constexpr std::size_t kTooLong = std::numeric_limits<std::size_t>::max();
    const Doubles v(MakeIVectorDouble(2, 7));
    const auto expectLengthError = [](const auto& operation) {
        try {
            operation();
            ADD_FAILURE() << "no exception";
        } catch (const std::length_error& error) {
            EXPECT_STREQ(error.what(), "vector<T> too long");
        }
    };
    expectLengthError([] { MakeIVectorDouble(kTooLong, 0); });
    expectLengthError([] { MakeIVectorInt(kTooLong / 4, 0); });
    expectLengthError([&] { v->ReserveImpl(kTooLong / 8); });
    expectLengthError([&] { v->ResizeImpl(kTooLong); });
    EXPECT_EQ(v->size(), 2u);
    expectLengthError([&] { v->assign(kTooLong, 1); });
}

TEST(MissingValueInfo, ComparesBitsOrNumbers) {
    const auto standard = MakeDefaultMissingInfo();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(std::bit_cast<std::uint64_t>(standard->MissingValue()), 0xFFFFFFFFFFFCBAFF);
    EXPECT_TRUE(standard->IsMissing(standard->MissingValue()));
    EXPECT_FALSE(standard->IsMissing(std::bit_cast<double>(0xFFFFFFFFFFFCBAFE)));
    EXPECT_FALSE(standard->IsMissing(nan));
    EXPECT_FALSE(standard->IsMissing(1.23456e30));
    const auto zero = MakeMissingInfo(0);
    EXPECT_TRUE(zero->IsMissing(-0.0) && zero->MissingValue() == 0 && !zero->IsMissing(nan));
    EXPECT_FALSE(MakeMissingInfo(nan)->IsMissing(nan));
}

// The links are the whole of a ring.
void ExpectRing(const std::vector<SharedPtrLink*>& ring) {
    for (const SharedPtrLink* link : ring) {
        EXPECT_EQ(link->RefCount(), static_cast<int>(ring.size()));
        EXPECT_EQ(link->IsReleaseable(), ring.size() == 1);
    }
}

TEST(SharedPtrLink, AddsAndRemoves) {
    SharedPtrLink a, b, c, d;
    ExpectRing({&a});
    a.AddLink(&b);
    ExpectRing({&a, &b});
    b.RemoveLink();
    ExpectRing({&a});
    ExpectRing({&b});
    a.AddLink(&b);
    a.AddLink(&c);
    // Of the same ring, the next link, the link itself; then of another ring.
    a.AddLink(&b);
    a.AddLink(&b);
    a.AddLink(&a);
    ExpectRing({&a, &b, &c});
    d.AddLink(&b);
    ExpectRing({&a, &c});
    ExpectRing({&b, &d});
}

TEST(SharedPtrLink, SwapsPlaces) {
    SharedPtrLink a, b, c, d, e;
    a.AddLink(&b);
    c.AddLink(&e);
    c.AddLink(&d);
    a.Swap(c);  // of two rings: (c b) (a d e)
    ExpectRing({&b, &c});
    ExpectRing({&a, &d, &e});
    a.Swap(d);  // of one ring, one after the other, and the reverse
    a.Swap(d);
    e.Swap(a);
    e.Swap(e);
    ExpectRing({&a, &d, &e});
    b.RemoveLink();
    b.Swap(a);  // a ring of one
    ExpectRing({&a});
    ExpectRing({&b, &d, &e});
    e.Swap(b);
    ExpectRing({&b, &d, &e});
}

struct Counted {
    explicit Counted(int* liveCount) : live(liveCount) { ++*live; }
    ~Counted() { --*live; }
    int* live;
};

TEST(SharedPtr, LastOwnerDeletes) {
    int live = 0;
    SharedPtr<Counted> a(new Counted(&live));
    SharedPtr<Counted> other(new Counted(&live));
    {
        const SharedPtr<Counted> b(a);
        SharedPtr<Counted> c(b);
        EXPECT_TRUE(c.get() == a.get() && (*c).live == &live && c);
        c = static_cast<const SharedPtr<Counted>&>(c);
        c = a;
        other = c;
        EXPECT_EQ(live, 1);
        c = SharedPtr<Counted>();
        EXPECT_FALSE(c);
        a = c;
    }
    EXPECT_EQ(live, 1);
    EXPECT_EQ(other->live, &live);
    other = a;
    EXPECT_EQ(live, 0);
}

}  // namespace
}  // namespace zul::dax::types
