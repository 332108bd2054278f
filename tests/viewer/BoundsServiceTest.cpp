#include "tests/viewer/ViewerFixtures.h"

#include <gmock/gmock.h>

namespace viewer {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Who waits for an answer; holds its request, which holds it back.
struct Asker : du::RefCounted {
    explicit Asker(int& livingAskers) : living(livingAskers) { ++living; }
    ~Asker() override { --living; }

    int& living;
    du::SmartPtr<hxk::BoundingBoxEvent> request;
    std::vector<int> statuses;
    dg::DBox box;
    std::function<void()> onAnswer;
};

class Request final : public hxk::BoundingBoxEvent {
public:
    explicit Request(Asker& asker) : m_asker(&asker) {}
    void OnComplete(int status) override {
        m_asker->statuses.push_back(status);
        m_asker->box = GetBox();
        m_asker->request = nullptr;
        if (m_asker->onAnswer) {
            m_asker->onAnswer();
        }
    }

private:
    du::SmartPtr<Asker> m_asker;
};

ViewSpec MakeSpec(double size) {
    ViewSpec description;
    description.bounds = {{-size, -size, -size}, {size, size, size}};
    return description;
}

class BoundsRequests : public testing::Test {
protected:
    ~BoundsRequests() override { EXPECT_EQ(living, 0) << "a request and who waits for it still hold each other"; }

    du::SmartPtr<Asker> NewAsker() { return du::SmartPtr<Asker>(new Asker(living)); }
    // Asks as the component does: hands the request over, then names the view.
    static bool Ask(Services& services, Asker& asker, ViewerShapeView& view) {
        asker.request = new Request(asker);
        const bool accepted = services.dispatch.ManageObject(asker.request);
        if (accepted) {
            view.GetBoundingBox(false, true, asker.request.Get());
        }
        return accepted;
    }

    int living = 0;
};

TEST_F(BoundsRequests, AnswersAsTheHostIsSetUp) {
    struct Row {
        const char* name;
        BoundsAnswer answer;
        bool accepted;
        std::vector<int> statuses;  // after one tick
        std::vector<int> statusesAtEnd;
        dg::DBox box;
    };
    const Row rows[] = {
        {"next tick", BoundsAnswer::NextTick, true, {0}, {0}, MakeSpec(2).bounds},
        {"failed", BoundsAnswer::Failed, true, {1}, {1}, {}},
        {"never", BoundsAnswer::Never, true, {}, {1}, {}},
        {"refused", BoundsAnswer::Refused, false, {}, {}, {}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const du::SmartPtr<Asker> asker = NewAsker();
        {
            Services services(row.answer);
            const auto view = services.OpenShapeView(MakeSpec(2));
            EXPECT_EQ(Ask(services, *asker, *view), row.accepted);
            EXPECT_THAT(asker->statuses, IsEmpty()) << "never inside the request itself";
            services.bounds.AnswerWaiting();
            services.bounds.AnswerWaiting();
            EXPECT_EQ(asker->statuses, row.statuses);
            EXPECT_EQ(asker->box, row.box);
            EXPECT_EQ(std::get<ManageObjectCall>(services.recorder.GetCalls()[0]).accepted, row.accepted);
            EXPECT_EQ(services.recorder.GetCalls().size(), row.accepted ? 2U : 1U);
        }
        EXPECT_EQ(asker->statuses, row.statusesAtEnd);
        asker->request = nullptr;  // the one that was refused
    }
}

TEST_F(BoundsRequests, AnAnswerMayCancelAnotherRequestAndAsksAgainForTheNextTick) {
    Services services;
    const du::SmartPtr<Asker> first = NewAsker();
    const du::SmartPtr<Asker> second = NewAsker();
    const auto view = services.OpenShapeView(MakeSpec(1));
    Ask(services, *first, *view);
    Ask(services, *second, *view);
    const du::SmartPtr<hxk::BoundingBoxEvent> cancelled = second->request;
    first->onAnswer = [&] {
        if (second->request) {
            std::exchange(second->request, nullptr)->Cancel();
            Ask(services, *first, *view);
        }
    };
    services.bounds.AnswerWaiting();
    EXPECT_EQ(cancelled->GetReferenceCount(), 1) << "it is let go";
    EXPECT_THAT(first->statuses, ElementsAre(0));
    services.bounds.AnswerWaiting();
    EXPECT_THAT(first->statuses, ElementsAre(0, 0));
    EXPECT_THAT(second->statuses, IsEmpty());
    first->onAnswer = nullptr;
}

TEST_F(BoundsRequests, AnEmptiedServiceFailsWhatWaitsAndTakesNothingNewMeanwhile) {
    Services services(BoundsAnswer::Never);
    const auto view = services.OpenShapeView(MakeSpec(1));
    const du::SmartPtr<Asker> asked = NewAsker();
    const du::SmartPtr<Asker> notYet = NewAsker();
    Ask(services, *asked, *view);
    notYet->request = new Request(*notYet);
    services.dispatch.ManageObject(notYet->request);
    bool acceptedAgain = true;
    asked->onAnswer = [&] { acceptedAgain = Ask(services, *asked, *view); };
    services.bounds.FailAll();
    EXPECT_FALSE(acceptedAgain);
    EXPECT_THAT(asked->statuses, ElementsAre(1));
    EXPECT_THAT(notYet->statuses, ElementsAre(1));
    asked->onAnswer = nullptr;
    EXPECT_TRUE(Ask(services, *asked, *view)) << "the service works again afterwards";
}

TEST_F(BoundsRequests, TakesOnlyBoundingBoxRequestsThatHaveNotEnded) {
    Services services;
    const du::SmartPtr<Asker> asker = NewAsker();
    const du::SmartPtr<hxk::BoundingBoxEvent> cancelled(new Request(*asker));
    cancelled->Cancel();
    EXPECT_FALSE(services.dispatch.ManageObject(cancelled));
    EXPECT_FALSE(services.dispatch.ManageObject(du::SmartPtr<dom::ManagedObject>(new dom::Observer)));
    EXPECT_FALSE(services.dispatch.ManageObject(nullptr));
    const du::SmartPtr<hxk::BoundingBoxEvent> once(new Request(*asker));
    EXPECT_TRUE(services.dispatch.ManageObject(once));
    EXPECT_TRUE(services.dispatch.ManageObject(once));
    services.bounds.AnswerWaiting();
    EXPECT_EQ(services.bounds.GetWaitingCount(), 1U) << "it has not asked a view yet";
}

}  // namespace
}  // namespace viewer
