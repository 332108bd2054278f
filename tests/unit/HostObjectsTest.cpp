// Classes of host objects, attached data, grouped updates, markups, and requests that are answered later.
#include "host/hxk/AsyncEvent.h"
#include "host/hxk/Markup.h"
#include "host/hxk/View.h"
#include "host/hxmk/Markup.h"
#include "host/hxmu/MarkupData.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using hxk::ClassType;

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
    const std::vector<const ClassType*> all = {
        &hxk::Object::CLASS_TYPE,       &hxk::View::CLASS_TYPE,        &hxk::ShapeView::CLASS_TYPE,
        &hxk::View2D::CLASS_TYPE,       &hxk::DrawingView::CLASS_TYPE, &hxk::ImageView::CLASS_TYPE,
        &hxk::DocumentView::CLASS_TYPE, &hxk::Markup::CLASS_TYPE,      &schematic};
    const struct {
        const ClassType& type;
        std::vector<const ClassType*> nearestFirst;
    } rows[] = {
        {hxk::Object::CLASS_TYPE, {all[0]}},
        {hxk::View::CLASS_TYPE, {all[1], all[0]}},
        {hxk::ShapeView::CLASS_TYPE, {all[2], all[1], all[0]}},
        {hxk::View2D::CLASS_TYPE, {all[3], all[1], all[0]}},
        {hxk::DrawingView::CLASS_TYPE, {all[4], all[3], all[1], all[0]}},
        {hxk::ImageView::CLASS_TYPE, {all[5], all[3], all[1], all[0]}},
        {hxk::DocumentView::CLASS_TYPE, {all[6], all[3], all[1], all[0]}},
        {hxk::Markup::CLASS_TYPE, {all[7], all[0]}},
        {schematic, {all[8], all[3], all[1], all[0]}},
    };
    for (const auto& row : rows) {
        const AnyObject object(row.type);
        EXPECT_EQ(object.GetDebugClassName(), row.type.name);
        EXPECT_EQ(object.GetClassTypes(), row.nearestFirst) << row.type.name;
        for (const ClassType* type : all) {
            const bool expected = testing::Value(row.nearestFirst, testing::Contains(type));
            EXPECT_EQ(object.IsATypeOf(*type), expected) << row.type.name << " as " << type->name;
            EXPECT_EQ(object.IsATypeOfId(type->id), expected) << row.type.name << " as " << type->name;
        }
        EXPECT_FALSE(object.IsATypeOf(namesake)) << "classes are compared by address, not by number or name";
    }
}

TEST(HostObjects, PlainUserDataIsReplacedAndNotOwned) {
    struct Data : du::UserData {};
    AnyObject object(hxk::Object::CLASS_TYPE);
    Data first;
    Data second;
    const du::Symbol name("note");
    EXPECT_EQ(object.GetUserData(name), nullptr);
    object.AddUserData(name, &first);
    object.AddUserData(du::Symbol("other"), &first);
    object.AddUserData(name, &second);
    EXPECT_EQ(object.GetUserData(name), &second);
    EXPECT_EQ(object.GetUserData(du::Symbol("Note")), nullptr);
    object.RemoveUserData(name);
    object.RemoveUserData(name);
    EXPECT_EQ(object.GetUserData(name), nullptr);
    EXPECT_EQ(object.GetUserData(du::Symbol("other")), &first);
    object.AddUserData(du::Symbol("other"), nullptr);
    EXPECT_EQ(object.GetUserData(du::Symbol("other")), nullptr);
}

TEST(HostObjects, SharedUserDataIsHeldAsLongAsTheObject) {
    struct Data : du::RefCounted {};
    const du::SmartPtr<Data> data(new Data);
    du::SmartPtr<AnyObject> object(new AnyObject(hxk::Object::CLASS_TYPE));
    const du::Symbol name("note");
    object->AddRefCountedUserData(name, data);
    EXPECT_EQ(object->GetRefCountedUserData(name), data.Get());
    EXPECT_EQ(data->GetReferenceCount(), 2);
    EXPECT_EQ(object->GetRefCountedUserData(du::Symbol("other")), nullptr);
    object.Reset();
    EXPECT_EQ(data->GetReferenceCount(), 1);
}

class Watched : public hxk::Observable {
public:
    void BeginUpdateGroup() override { calls += '('; }
    void EndUpdateGroup() override { calls += ')'; }
    std::string calls;
};

TEST(UpdateGroups, NestAndHoldWhatTheyGroup) {
    du::SmartPtr<Watched> watched(new Watched);
    {
        const hxk::Observable::UpdateGroup outer(watched);
        EXPECT_EQ(watched->GetReferenceCount(), 2);
        {
            const hxk::Observable::UpdateGroup inner(watched);
            EXPECT_EQ(watched->calls, "((");
        }
        EXPECT_EQ(watched->calls, "(()");
    }
    EXPECT_EQ(watched->calls, "(())");
    EXPECT_EQ(watched->GetReferenceCount(), 1);
    const hxk::Observable::UpdateGroup ofNothing(nullptr);
}

TEST(UpdateGroups, EndOnAnObservableThatOnlyTheyHold) {
    du::SmartPtr<Watched> watched(new Watched);
    const hxk::Observable::UpdateGroup group(watched);
    watched.Reset();  // the group's end must still reach it; the address sanitizer watches
}

class TestMarkup : public hxmk::Markup {};

TEST(Markups, TellTheListenerOfChangesInPlaceOnly) {
    struct Listener : hxk::MarkupListener {
        void OnMarkupContentChanged(const hxk::Markup& markup) override { changed.push_back(&markup); }
        std::vector<const hxk::Markup*> changed;
    } listener;
    const du::SmartPtr<TestMarkup> markup(new TestMarkup);
    markup->NotifyContentChanged();
    hxk::Markup::SetListener(&listener);
    const du::SmartPtr<hxmu::MarkupData> content(new hxmu::MarkupData);
    markup->SetContent(content, true);
    EXPECT_THAT(listener.changed, IsEmpty());
    markup->NotifyContentChanged();
    EXPECT_THAT(listener.changed, ElementsAre(markup.Get()));
    hxk::Markup::SetListener(nullptr);
    markup->NotifyContentChanged();
    EXPECT_EQ(listener.changed.size(), 1U);

    EXPECT_EQ(markup->GetContent(), content);
    EXPECT_TRUE(markup->IsVisible());
    markup->SetContent(nullptr, false);
    EXPECT_EQ(content->GetReferenceCount(), 1);
    EXPECT_FALSE(markup->IsVisible());
}

TEST(Markups, ReadersNest) {
    const TestMarkup markup;
    markup.BeginRead();
    markup.BeginRead();
    markup.EndRead();
    EXPECT_TRUE(markup.IsBeingRead());
    markup.EndRead();
    EXPECT_FALSE(markup.IsBeingRead());
}

TEST(MarkupModels, ContainersListTheLatestFirst) {
    const du::SmartPtr<hxmu::ModelBase> first(new hxmu::ModelSphere(1));
    const du::SmartPtr<hxmu::ModelBase> second(new hxmu::ModelLeaderLine(5));
    hxmu::ModelContainer container;
    container.AddHead(first);
    container.AddHead(second);
    EXPECT_THAT(container.GetModels(), ElementsAre(second, first));
}

// Writes down what it is told. A request is handed to a host by pointer, so it can end while it is being told.
class Request : public hxk::BoundingBoxEvent {
public:
    explicit Request(std::vector<std::string>& log) : m_log(log) {}
    ~Request() override { m_log.emplace_back("destroyed"); }
    void OnComplete(int status) override {
        m_log.push_back("complete " + std::to_string(status));
        Complete(99);
        Cancel();
    }
    void OnProgress(int percent) override { m_log.push_back("progress " + std::to_string(percent)); }

private:
    std::vector<std::string>& m_log;
};

class Listener : public hxk::AsyncEventListener {
public:
    void OnCancelled(hxk::BaseAsyncEvent& event) override {
        ++calls;
        EXPECT_TRUE(event.IsCancelled());
        held.Reset();
    }
    du::SmartPtr<Request> held;
    int calls = 0;
};

enum class End { Complete, Fail, FailWithZero, Cancel };

void Apply(hxk::BaseAsyncEvent& event, End end) {
    switch (end) {
    case End::Complete: return event.Complete(0);
    case End::Fail: return event.CompleteWithError(7);
    case End::FailWithZero: return event.CompleteWithError(0);
    case End::Cancel: return event.Cancel();
    }
}

TEST(Requests, EndOnce) {
    const struct {
        const char* name;
        std::vector<End> ends;
        std::vector<std::string> told;
        int status;
        bool complete;
    } rows[] = {
        {"completed", {End::Complete}, {"complete 0"}, 0, true},
        {"failed", {End::Fail}, {"complete 7"}, 7, true},
        {"a failure is never status 0", {End::FailWithZero}, {"complete 1"}, 1, true},
        {"completed twice", {End::Complete, End::Fail}, {"complete 0"}, 0, true},
        {"failed, then completed", {End::Fail, End::Complete}, {"complete 7"}, 7, true},
        {"cancelled", {End::Cancel}, {}, 0, false},
        {"cancelled, then completed", {End::Cancel, End::Complete}, {}, 0, false},
        {"cancelled, then failed", {End::Cancel, End::Fail}, {}, 0, false},
        {"completed, then cancelled", {End::Complete, End::Cancel}, {"complete 0"}, 0, true},
    };
    for (const auto& row : rows) {
        std::vector<std::string> log;
        const du::SmartPtr<Request> request(new Request(log));
        struct Plain : hxk::BaseAsyncEvent {
        } plain;
        for (const End end : row.ends) {
            Apply(*request, end);
            Apply(plain, end);
        }
        EXPECT_EQ(log, row.told) << row.name;
        for (const hxk::BaseAsyncEvent* event :
             {static_cast<hxk::BaseAsyncEvent*>(request.Get()), static_cast<hxk::BaseAsyncEvent*>(&plain)}) {
            EXPECT_EQ(event->Status(), row.status) << row.name;
            EXPECT_EQ(event->IsComplete(), row.complete) << row.name;
            EXPECT_EQ(event->IsCancelled(), !row.complete) << row.name;
        }
    }
}

TEST(Requests, ProgressGoesToTheRequest) {
    std::vector<std::string> log;
    const du::SmartPtr<Request> request(new Request(log));
    request->Progress(40);
    EXPECT_THAT(log, ElementsAre("progress 40"));
}

TEST(Requests, TheListenerHearsOfOneCancelAndMayReleaseTheRequestThen) {
    std::vector<std::string> log;
    Listener listener;
    listener.held = new Request(log);
    listener.held->SetListener(&listener);
    listener.held->Cancel();
    EXPECT_EQ(listener.calls, 1);
    EXPECT_THAT(log, ElementsAre("destroyed"));

    const du::SmartPtr<Request> completed(new Request(log));
    completed->SetListener(&listener);
    completed->Complete(0);
    EXPECT_EQ(listener.calls, 1) << "an answer is no cancel";
    const du::SmartPtr<Request> twice(new Request(log));
    twice->SetListener(&listener);
    twice->Cancel();
    twice->Cancel();
    EXPECT_EQ(listener.calls, 2);
}

TEST(Requests, TheBoxIsEmptyUntilItIsSet) {
    hxk::BoundingBoxEvent request;
    EXPECT_EQ(request.GetBox(), dg::DBox::EMPTY);
    request.SetBox({{1, 2, 3}, {4, 5, 6}});
    EXPECT_EQ(request.GetBox(), dg::DBox({1, 2, 3}, {4, 5, 6}));
}

TEST(ManagedObjects, DescribeAClassWithoutBases) {
    const hxk::BoundingBoxEvent object;
    EXPECT_EQ(object.GetBaseClassCount(), 0U);
    EXPECT_EQ(object.BaseClassOffsetByName(du::Symbol("anything")), -1);
    EXPECT_EQ(object.GetBaseClassParent(0), -1);
    EXPECT_EQ(object.GetBaseClass(0), du::Symbol());
    EXPECT_EQ(object.GetClassName(), du::Symbol());
}

}  // namespace
