// Kinds of touch are drawn like cards, so that rare ones come as often as they should in every stretch. Only raw random
// numbers are used, because the standard distributions differ between libraries.
#include "bench/SoakTouches.h"

#include "replay/recording/MouseEcho.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

namespace bench {
namespace {

constexpr int FrameMs = 8;
constexpr int TickMs = 10;
// Longer than the silence that ends a touch.
constexpr int SilenceMs = 700;
constexpr int LongestPauseMs = 300;
// The touch clock has 32 bits. It starts over long before they are used up, between two touches.
constexpr std::int32_t LastTouchMs = 2'000'000'000;

enum class Lift { Together, OneByOne, Never };

// A kind of touch: one or two hands with their fingers in a circle. A hand goes, opens and turns evenly, and turns back
// at the edges of its range.
struct Kind {
    int share;  // how often it comes among a deck of kinds
    int hands;
    int fingers;    // of each hand
    double spread;  // of a hand's fingers from its middle, in pixels
    double travel;  // fastest, in pixels a frame and axis
    double growth;  // fastest, of the spread, a frame
    double turn;    // fastest, in radians a frame
    int fewest;     // frames
    int most;
    Lift lift;
};

constexpr Kind Kinds[] = {
    {12, 1, 1, 0, 30, 0, 0, 12, 60, Lift::Together},          // flick
    {8, 1, 1, 0, 5, 0, 0, 40, 200, Lift::Together},           // slow spin, look-around, drag, 2D pan
    {8, 1, 1, 0, 0, 0, 0, 2, 12, Lift::Together},             // tap
    {2, 1, 1, 0, 0, 0, 0, 130, 136, Lift::Together},          // press-and-hold
    {4, 1, 2, 45, 12, 0, 0, 30, 150, Lift::Together},         // pan with close fingers
    {6, 1, 2, 150, 1, 0.03, 0, 30, 150, Lift::OneByOne},      // pinch
    {6, 1, 2, 180, 1, 0, 0.05, 30, 150, Lift::OneByOne},      // twist
    {8, 1, 2, 160, 10, 0.02, 0.03, 30, 250, Lift::OneByOne},  // all of them
    {3, 1, 5, 190, 8, 0.02, 0.03, 30, 100, Lift::OneByOne},   // a whole hand
    {6, 2, 2, 50, 6, 0, 0, 40, 200, Lift::Together},          // two hands, in flight when exploring
    {2, 2, 5, 90, 6, 0.01, 0.01, 20, 100, Lift::OneByOne},    // ten fingers
    {3, 1, 2, 60, 0, 0, 0, 3, 20, Lift::Together},            // two-finger tap
    {1, 1, 3, 90, 0, 0, 0, 379, 384, Lift::Together},         // three-finger hold
    {3, 1, 2, 120, 10, 0.02, 0.03, 10, 60, Lift::Never},      // never lifted
};

struct Hand {
    double x;  // of its middle, in view pixels
    double y;
    double spread;
    double angle;
    double stepX;
    double stepY;
    double growth;
    double turn;
};

Hand PlaceHand(const Kind& kind, int index, std::mt19937& random) {
    Hand hand{};
    const double side = kind.hands == 1 ? 0 : index == 0 ? -0.25 : 0.25;
    hand.x = SoakViewWidth * (0.5 + side + 0.1 * Signed(random));
    hand.y = SoakViewHeight * (0.5 + 0.1 * Signed(random));
    hand.spread = kind.fingers == 1 ? 0 : kind.spread;
    hand.angle = std::numbers::pi * Signed(random);
    hand.stepX = kind.travel * Signed(random);
    hand.stepY = kind.travel * Signed(random);
    hand.growth = kind.growth * Signed(random);
    hand.turn = kind.turn * Signed(random);
    return hand;
}

void BounceBack(double value, double low, double high, double& step) {
    if ((value < low && step < 0) || (value > high && step > 0)) {
        step = -step;
    }
}

void MoveHand(Hand& hand) {
    hand.x += hand.stepX;
    hand.y += hand.stepY;
    hand.spread *= 1 + hand.growth;
    hand.angle += hand.turn;
    BounceBack(hand.x, 0.15 * SoakViewWidth, 0.85 * SoakViewWidth, hand.stepX);
    BounceBack(hand.y, 0.15 * SoakViewHeight, 0.85 * SoakViewHeight, hand.stepY);
    BounceBack(hand.spread, 60, 350, hand.growth);
}

std::int32_t ToPixel(double value, int size) {
    return static_cast<std::int32_t>(std::clamp(std::round(value), 1.0, size - 1.0));
}

workflow::TouchRecord RecordOf(const Hand& hand, int finger, int fingers, std::int32_t id, std::int32_t flags) {
    const double angle = hand.angle + 2 * std::numbers::pi * finger / fingers;
    return {id, ToPixel(hand.x + hand.spread * std::cos(angle), SoakViewWidth),
            ToPixel(hand.y + hand.spread * std::sin(angle), SoakViewHeight), 0, flags};
}

// When each finger lands and lifts, in frames.
struct FingerSpan {
    int first;
    int last;
};

std::vector<FingerSpan> SpansOf(const Kind& kind, int frames, std::mt19937& random) {
    const int landingStep = Below(random, 3);
    const int liftingStep = kind.lift == Lift::OneByOne ? 1 + Below(random, 3) : 0;
    std::vector<FingerSpan> spans;
    for (int finger = 0; finger < kind.hands * kind.fingers; ++finger) {
        spans.push_back({finger * landingStep, frames + finger * (landingStep + liftingStep)});
    }
    return spans;
}

}  // namespace

int Below(std::mt19937& random, int count) {
    return static_cast<int>(random() % static_cast<std::uint32_t>(count));
}

double Signed(std::mt19937& random) {
    return static_cast<double>(random()) / (0.5 * static_cast<double>(std::mt19937::max())) - 1;
}

std::vector<replay::Event> SoakTouches::Next() {
    if (m_deck.empty()) {
        for (std::size_t kind = 0; kind < std::size(Kinds); ++kind) {
            m_deck.insert(m_deck.end(), static_cast<std::size_t>(Kinds[kind].share), static_cast<int>(kind));
        }
    }
    const auto drawn = m_deck.begin() + Below(m_random, static_cast<int>(m_deck.size()));
    const Kind& kind = Kinds[*drawn];
    m_deck.erase(drawn);

    const int frames = kind.fewest + Below(m_random, kind.most - kind.fewest + 1);
    const std::vector<FingerSpan> spans = SpansOf(kind, frames, m_random);
    std::vector<Hand> hands;
    for (int hand = 0; hand < kind.hands; ++hand) {
        hands.push_back(PlaceHand(kind, hand, m_random));
    }

    replay::Session session;
    for (int now = 0; now <= spans.back().last; ++now) {
        workflow::TouchFrame frame;
        for (std::size_t finger = 0; finger < spans.size(); ++finger) {
            const FingerSpan& span = spans[finger];
            if (now < span.first || now > span.last) {
                continue;
            }
            const bool lifts = now == span.last && kind.lift != Lift::Never;
            const std::int32_t flags = now == span.first ? workflow::TouchDown
                                       : lifts           ? workflow::TouchUp
                                                         : workflow::TouchMove;
            const auto index = static_cast<int>(finger);
            frame.records.at(static_cast<std::size_t>(frame.count++)) =
                RecordOf(hands[finger / static_cast<std::size_t>(kind.fingers)], index % kind.fingers, kind.fingers,
                         m_nextId + index, flags);
        }
        AddFrame(frame, session.events);
        std::for_each(hands.begin(), hands.end(), MoveHand);
    }
    m_nextId = (m_nextId + static_cast<std::int32_t>(spans.size())) % 1000;
    AddPause(kind.lift == Lift::Never ? SilenceMs : Below(m_random, LongestPauseMs), session.events);
    if (m_touchClock > LastTouchMs) {
        m_touchClock = 500;
    }
    replay::AddMouseEcho(session);
    return std::move(session.events);
}

void SoakTouches::AddFrame(const workflow::TouchFrame& frame, std::vector<replay::Event>& events) {
    replay::TouchEvent event{frame};
    for (workflow::TouchRecord& record : event.frame.records) {
        record.time = record.id < 0 ? 0 : m_touchClock;
    }
    events.emplace_back(event);
    PassTo(m_now + FrameMs, events);
}

void SoakTouches::AddPause(int milliseconds, std::vector<replay::Event>& events) {
    PassTo(m_now + milliseconds, events);
}

// Lets time pass, with the ticks that are due.
void SoakTouches::PassTo(std::int64_t now, std::vector<replay::Event>& events) {
    while (m_lastTick + TickMs <= now) {
        m_lastTick += TickMs;
        events.emplace_back(replay::TimerEvent{m_lastTick, TickMs});
    }
    m_touchClock += static_cast<std::int32_t>(now - m_now);
    m_now = now;
}

}  // namespace bench
