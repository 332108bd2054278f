// The release protocol of shared objects, seen from the object: what it is asked, when, and with how many references.
#include "host/du/SmartPtr.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <string>
#include <type_traits>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Log = std::vector<std::string>;

// Writes down the questions it is asked and its end, with the number of references at that moment.
class Watched : public du::RefCounted {
public:
    Watched(std::string name, Log& log) : m_name(std::move(name)), m_log(log) {}
    ~Watched() override {
        Write("destroyed");
        if (onDestroyed) {
            onDestroyed();
        }
    }

    bool ZeroReferenceCountHook() const override {
        Write("asked");
        return onAsked ? onAsked() : RefCounted::ZeroReferenceCountHook();
    }

    std::function<bool()> onAsked;
    std::function<void()> onDestroyed;

private:
    void Write(const char* what) const {
        m_log.push_back(m_name + " " + what + " at " + std::to_string(GetReferenceCount()));
    }

    std::string m_name;
    Log& m_log;
};

struct WatchedMore : Watched {
    using Watched::Watched;
};

static_assert(sizeof(du::SmartPtr<Watched>) == sizeof(void*));
static_assert(std::is_convertible_v<du::SmartPtr<WatchedMore>, du::SmartPtr<Watched>>);
static_assert(!std::is_constructible_v<du::SmartPtr<WatchedMore>, du::SmartPtr<Watched>>, "down-casts are explicit");
static_assert(!std::is_convertible_v<Watched*, du::SmartPtr<Watched>>, "taking over is visible");
static_assert(std::is_convertible_v<du::SmartPtr<Watched>, du::ConstSmartPtr<Watched>>);

class SmartPtrs : public testing::Test {
protected:
    Log log;
};

TEST_F(SmartPtrs, EveryHolderCountsOnce) {
    du::SmartPtr<WatchedMore> first(new WatchedMore("a", log));
    EXPECT_EQ(first->GetReferenceCount(), 1);
    {
        const std::vector<du::SmartPtr<WatchedMore>> copies(1, first);
        const du::SmartPtr<Watched> base = first;
        const du::ConstSmartPtr<Watched> constant = base;
        EXPECT_EQ(first->GetReferenceCount(), 4);
        EXPECT_EQ(base, constant.Get());
    }
    const du::SmartPtr<WatchedMore>& same = first;
    first = same;
    first = first.Get();
    EXPECT_EQ(first->GetReferenceCount(), 1);
    EXPECT_THAT(log, IsEmpty()) << "only the last release asks";
}

TEST_F(SmartPtrs, AnObjectThatRefusesLivesOnWithTheReferenceOfTheQuestion) {
    auto* object = new Watched("a", log);
    object->onAsked = [] { return false; };
    du::SmartPtr<Watched> pointer(object);
    pointer.Reset();
    EXPECT_EQ(pointer, nullptr);
    EXPECT_EQ(object->GetReferenceCount(), 1);

    pointer = object;
    pointer.Reset();
    EXPECT_THAT(log, ElementsAre("a asked at 1")) << "the kept reference is still there: nothing to ask";

    object->onAsked = []() -> bool { throw std::bad_alloc(); };
    EXPECT_NO_THROW(du::ReleaseReference(object, nullptr)) << "which destructors do, too";
    EXPECT_EQ(object->GetReferenceCount(), 1);
    object->onAsked = nullptr;
    du::ReleaseReference(object, nullptr);
    EXPECT_THAT(log, ElementsAre("a asked at 1", "a asked at 1", "a asked at 1", "a destroyed at 0"));
}

TEST_F(SmartPtrs, AnObjectThatIsTakenDuringTheQuestionLivesOn) {
    du::SmartPtr<Watched> saved;
    auto* object = new Watched("a", log);
    object->onAsked = [&] {
        saved = object;
        return true;
    };
    du::SmartPtr<Watched>(object).Reset();
    EXPECT_EQ(saved->GetReferenceCount(), 1);
    EXPECT_THAT(log, ElementsAre("a asked at 1"));
    object->onAsked = nullptr;
}

TEST_F(SmartPtrs, AssignmentTakesTheNewObjectBeforeItReleasesTheOld) {
    auto* fresh = new Watched("new", log);
    du::SmartPtr<Watched> pointer(new Watched("old", log));
    pointer->onDestroyed = [&] {
        EXPECT_EQ(fresh->GetReferenceCount(), 1);
        EXPECT_EQ(pointer, fresh);
    };
    pointer = fresh;
    EXPECT_THAT(log, ElementsAre("old asked at 1", "old destroyed at 0"));
}

TEST_F(SmartPtrs, TheLastReleaseAsksWithOneReferenceAndDestroysWithNoneFromANullPointer) {
    du::SmartPtr<Watched> pointer(new Watched("a", log));
    pointer->onDestroyed = [&] {
        EXPECT_EQ(pointer, nullptr);
        pointer.Reset();
    };
    pointer = nullptr;
    EXPECT_THAT(log, ElementsAre("a asked at 1", "a destroyed at 0"));
}

}  // namespace
