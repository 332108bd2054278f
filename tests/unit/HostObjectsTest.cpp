// Classes of host objects, grouped updates, and requests that are answered later.
#include "host/hxk/AsyncEvent.h"
#include "host/hxk/Markup.h"
#include "host/hxk/View.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;

using hxk::ClassType;

using Log = std::vector<std::string>;

// An object of any class.
class AnyObject : public hxk::Object {
public:
    explicit AnyObject(const ClassType& type) : m_type(type) {}
    const ClassType& GetClassType() const override { return m_type; }

private:
    const ClassType& m_type;
};

TEST(HostClasses, AnObjectIsOfItsClassAndOfItsBases) {
    const ClassType schematic{hxk::EcadSchematicViewId, "Schematic", &hxk::View2D::CLASS_TYPE};
    const ClassType namesake{hxk::ShapeView::CLASS_TYPE.id, "ShapeView", nullptr};
    const auto* object = &hxk::Object::CLASS_TYPE;
    const auto* view = &hxk::View::CLASS_TYPE;
    const auto* view2D = &hxk::View2D::CLASS_TYPE;
    const std::vector<const ClassType*> chains[] = {
        // a class and its bases
        {object},
        {view, object},
        {&hxk::ShapeView::CLASS_TYPE, view, object},
        {view2D, view, object},
        {&hxk::DocumentView::CLASS_TYPE, view2D, view, object},
        {&hxk::Markup::CLASS_TYPE, object},
        {&schematic, view2D, view, object},
    };
    for (const auto& chain : chains) {
        const AnyObject instance(*chain.front());
        EXPECT_EQ(instance.GetClassTypes(), chain) << instance.GetDebugClassName();
        for (const auto& other : chains) {
            const ClassType* type = other.front();
            const bool expected = testing::Value(chain, testing::Contains(type));
            EXPECT_EQ(instance.IsATypeOf(*type), expected) << instance.GetDebugClassName() << " as " << type->name;
            EXPECT_EQ(instance.IsATypeOfId(type->id), expected) << instance.GetDebugClassName() << " as " << type->name;
        }
        EXPECT_FALSE(instance.IsATypeOf(namesake)) << "classes are compared by address, not by number or name";
    }
}

TEST(UpdateGroups, NestAndHoldWhatTheyGroup) {
    struct Watched : hxk::Observable {
        explicit Watched(std::string& log) : calls(log) {}
        void BeginUpdateGroup() override { calls += '('; }
        void EndUpdateGroup() override { calls += ')'; }
        std::string& calls;
    };
    std::string calls;
    {
        du::SmartPtr<Watched> watched(new Watched(calls));
        const hxk::Observable::UpdateGroup outer(watched);
        { const hxk::Observable::UpdateGroup inner(watched); }
        EXPECT_EQ(calls, "(()");
        watched.Reset();  // the end of the outer group must still reach it
    }
    EXPECT_EQ(calls, "(())");
    const hxk::Observable::UpdateGroup ofNothing(nullptr);
}

// Writes down what it is told, and tries to end again while it is told of its end.
class Request : public hxk::BoundingBoxEvent {
public:
    explicit Request(Log& log) : m_log(log) {}
    ~Request() override { m_log.emplace_back("destroyed"); }
    void OnComplete(int status) override {
        m_log.push_back("complete " + std::to_string(status));
        Complete(99);
        Cancel();
    }
    void OnProgress(int percent) override { m_log.push_back("progress " + std::to_string(percent)); }

private:
    Log& m_log;
};

// Counts, and may hold the only reference to the request that it is told of.
class Listener : public hxk::AsyncEventListener {
public:
    void OnCancelled(hxk::BaseAsyncEvent& event) override {
        ++cancels;
        EXPECT_TRUE(event.IsCancelled());
        held.Reset();
    }
    du::SmartPtr<Request> held;
    int cancels = 0;
};

TEST(Requests, EndOnce) {
    using Event = hxk::BaseAsyncEvent;
    const auto complete = [](Event& event) { event.Complete(0); };
    const auto fail = [](Event& event) { event.CompleteWithError(7); };
    const auto failWithZero = [](Event& event) { event.CompleteWithError(0); };
    const auto cancel = [](Event& event) { event.Cancel(); };
    const auto progress = [](Event& event) { event.Progress(40); };
    const struct {
        const char* name;
        std::vector<void (*)(Event&)> calls;
        Log told;
        int status;
        bool complete;
    } rows[] = {
        {"completed after a while", {progress, complete}, {"progress 40", "complete 0"}, 0, true},
        {"a failure is never status 0", {failWithZero}, {"complete 1"}, 1, true},
        {"completed, then failed", {complete, fail}, {"complete 0"}, 0, true},
        {"failed, then completed", {fail, complete}, {"complete 7"}, 7, true},
        {"cancelled, then completed", {cancel, complete}, {}, 0, false},
        {"cancelled, then failed", {cancel, fail}, {}, 0, false},
        {"cancelled twice", {cancel, cancel}, {}, 0, false},
        {"completed, then cancelled", {complete, cancel}, {"complete 0"}, 0, true},
    };
    for (const auto& row : rows) {
        Log log;
        Listener listener;
        const du::SmartPtr<Request> request(new Request(log));
        request->SetListener(&listener);
        for (const auto call : row.calls) {
            call(*request);
        }
        EXPECT_EQ(log, row.told) << row.name;
        EXPECT_EQ(request->Status(), row.status) << row.name;
        EXPECT_EQ(request->IsComplete(), row.complete) << row.name;
        EXPECT_EQ(request->IsCancelled(), !row.complete) << row.name;
        EXPECT_EQ(listener.cancels, row.complete ? 0 : 1) << row.name;
    }
}

TEST(Requests, MayBeReleasedByTheListenerOfTheirCancel) {
    Log log;
    Listener listener;
    listener.held = new Request(log);
    listener.held->SetListener(&listener);
    listener.held->Cancel();
    EXPECT_EQ(listener.cancels, 1);
    EXPECT_THAT(log, ElementsAre("destroyed"));
}

}  // namespace
