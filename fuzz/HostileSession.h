// A session that nobody would play: the gestures of real hands between wild frames, ticks and clicks, in a host that
// changes its views and its mind, fails, calls back, and copies, assigns and drops components at any moment. Choices
// decide everything, so that the same choices give the same session. The invariants are checked after every event.
#pragma once

#include "fuzz/Choices.h"
#include "fuzz/PlausibleHand.h"
#include "tests/support/FaultyHost.h"
#include "tests/support/Invariants.h"
#include "viewer/ViewSpec.h"

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace fuzz {

using tests::FaultyHost;
using tests::HostCall;
using tests::Invariants;
using tests::ViewKind;

class HostileSession {
public:
    // Chooses the switches and the screen too. The choices outlive the session. With a log every event is written to it
    // as it begins.
    explicit HostileSession(Choices& choices, std::ostream* log = nullptr);
    HostileSession(const HostileSession&) = delete;
    HostileSession& operator=(const HostileSession&) = delete;
    ~HostileSession();

    // Plays some more: one event, or one stretch of frames and ticks. Nothing once there is a fault.
    void Step();

    // What is wrong, and the events before it; empty when nothing is.
    [[nodiscard]] const std::string& GetFault() const { return m_fault; }
    // Touch frames so far, and those after which the view showed something else.
    [[nodiscard]] int GetFrameCount() const { return m_frames; }
    [[nodiscard]] int GetUsedFrameCount() const { return m_usedFrames; }
    // What the views show, to the last bit.
    [[nodiscard]] std::string GetCameraText() const;

private:
    struct Event {
        const char* name;
        std::int64_t first;
        std::int64_t second;
    };
    // A component that hears the messages too; the host has the main one.
    struct Companion {
        du::SmartPtr<touch::TouchWorkflow> workflow;
        Invariants invariants;
    };

    // Input.
    void PlayHand();
    void PlayFrames(int count, int milliseconds);
    void SendFrame(const workflow::TouchFrame& frame);
    void SendWildFrame();
    void SendTick(std::int64_t now, std::int64_t interval);
    void SendMouse();
    void SendMode();
    void SendPreferences();
    void Deliver(const workflow::Msg& message);

    // What the host does of itself.
    void OpenView();
    void ChangeCamera();
    void ChangeAnswers();
    void AnswerRequests();
    void EndTransition();
    void CallBackLater();
    void CopyOrDrop();
    Companion TakeCompanion();
    void CallBesideTheDispatch();
    void DoSomething(int what);

    // After the host has changed what the components see or share.
    void NoteHostChange();
    void NoteDisorder();
    void ShareDisorder();
    // After components were copied or assigned.
    void NoteKinship(Invariants& invariants) const;
    void Note(const char* name, std::int64_t first = 0, std::int64_t second = 0);
    void CheckInvariants();
    void CheckInvariants(const touch::TouchWorkflow& workflow, Invariants& invariants);

    Choices& m_choices;
    std::ostream* m_log;
    FaultyHost m_host;
    Invariants m_invariants;  // of the main component
    std::vector<Companion> m_companions;
    PlausibleHand m_hand;
    std::int64_t m_now = 20'000;
    std::int64_t m_interval = 10;
    int m_frames = 0;
    int m_usedFrames = 0;
    int m_depth = 0;  // of calls back
    bool m_checking = false;
    std::vector<Event> m_events;  // the latest ones
    std::string m_fault;
};

}  // namespace fuzz
