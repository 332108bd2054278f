// A toolkit that is mostly sensible, and the laws that its feeder has to keep all the same: what a component relies on.
#include "fuzz/HostileContacts.h"

#include "input/TouchFeeder.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <map>
#include <utility>

namespace fuzz {
namespace {

// Checks what a feeder sends.
class Laws : public input::FeederSink {
public:
    Laws(bool isFixedStep, std::vector<std::int64_t>& sent) : m_isFixedStep(isFixedStep), m_sent(sent) {}

    void TakeTick(std::int64_t now, std::int64_t interval) override {
        m_sent.push_back(now);
        Demand(interval == 10 && (m_ticks == 0 || now == m_lastTick + 10), "ticks are even");
        m_lastTick = now;
        ++m_ticks;
        ++m_ticksOfAdvance;
        m_framesOfTick = 0;
    }
    void TakeMouse(const du::Symbol& /*type*/, std::int32_t x, std::int32_t y) override {
        m_sent.push_back(x);
        m_sent.push_back(y);
    }
    void TakeFrame(const workflow::TouchFrame& frame) override {
        ++m_framesOfTick;
        m_hadFrames = true;
        Demand(m_ticks > 0 && (!m_isFixedStep || m_framesOfTick == 1), "each frame has a tick");
        Demand(frame.count >= 1 && frame.count <= 10, "a frame has one to ten records");
        int landings = 0;
        int lifts = 0;
        std::map<std::int32_t, std::int32_t> flags;
        for (std::size_t i = 0; i < frame.records.size(); ++i) {
            const workflow::TouchRecord& record = frame.records.at(i);
            for (const std::int32_t value : {record.id, record.x, record.y, record.time, record.flags}) {
                m_sent.push_back(value);
            }
            if (static_cast<int>(i) >= frame.count) {
                Demand(record == workflow::TouchRecord(), "what is not counted is empty");
                continue;
            }
            Check(record, frame.records[0].time);
            Demand(flags.emplace(record.id, record.flags).second, "ids are different");
            landings += record.flags == workflow::TouchDown ? 1 : 0;
            lifts += record.flags == workflow::TouchUp ? 1 : 0;
        }
        const bool isFirst = m_down.empty();
        Demand(isFirst || frame.records[0].time >= m_time, "times run back only when a touch begins");
        m_time = frame.records[0].time;
        Demand(!m_isFixedStep || landings == 0 || lifts == 0, "no frame lands and lifts");
        Demand(!m_isFixedStep || !isFirst || frame.count == 1, "the first finger lands alone");
        Follow(flags);
    }

    void BeginAdvance() {
        Demand(m_ticksOfAdvance <= input::MaxStepsPerAdvance, "steps of an Advance are bounded");
        m_ticksOfAdvance = 0;
    }
    void DemandNoFinger() { Demand(m_down.empty(), "in the end no finger is down"); }
    void Forget() { m_down.clear(); }
    // Whether frames came since the last question.
    [[nodiscard]] bool TakeHadFrames() { return std::exchange(m_hadFrames, false); }
    void SetSize(std::uint32_t width, std::uint32_t height) {
        m_lastX = std::max<std::int64_t>(1, std::int64_t{width} - 1);
        m_lastY = std::max<std::int64_t>(1, std::int64_t{height} - 1);
    }
    // The cancelled fingers keep their pixels for two frames.
    void AllowAnyPixel() { m_lastX = m_lastY = std::numeric_limits<std::int32_t>::max(); }
    [[nodiscard]] const std::string& Broken() const { return m_broken; }

private:
    void Demand(bool isMet, const char* law) { m_broken = isMet || !m_broken.empty() ? m_broken : law; }

    void Check(const workflow::TouchRecord& record, std::int32_t time) {
        Demand(record.id >= 0, "ids are 0 or more");
        Demand(record.time == time && time >= 1, "a frame has one time, above 0");
        Demand(record.x >= 1 && record.x <= m_lastX && record.y >= 1 && record.y <= m_lastY, "places are in the view");
    }

    // Each finger that is down is in the frame, and others only to land.
    void Follow(const std::map<std::int32_t, std::int32_t>& flags) {
        for (const auto& [id, flag] : flags) {
            Demand((flag == workflow::TouchDown) == (m_down.count(id) == 0), "a finger lands once, before all else");
        }
        for (const auto& [id, flag] : m_down) {
            Demand(flags.count(id) == 1, "a finger is in every frame until it lifts");
        }
        m_down.clear();
        std::copy_if(flags.begin(), flags.end(), std::inserter(m_down, m_down.end()),
                     [](const auto& finger) { return finger.second != workflow::TouchUp; });
    }

    bool m_isFixedStep;
    std::vector<std::int64_t>& m_sent;
    std::map<std::int32_t, std::int32_t> m_down;
    std::int64_t m_lastX = 1;
    std::int64_t m_lastY = 1;
    std::int64_t m_lastTick = 0;
    std::int32_t m_time = 0;
    int m_ticks = 0;
    int m_ticksOfAdvance = 0;
    int m_framesOfTick = 0;
    bool m_hadFrames = false;
    std::string m_broken;
};

// A hand and its toolkit: mostly sensible, sometimes not.
class HostileToolkit {
public:
    HostileToolkit(Choices& choices, Laws& laws, const input::FeederOptions& options)
        : m_choices(choices), m_laws(laws), m_feeder(laws, options) {
        SetGeometry();
    }

    void Play() {
        const std::int64_t contact = m_choices.Chance(95) ? m_choices.Below(12) : m_choices.LongInteger();
        const double x = m_choices.Chance(95) ? m_choices.Below(1300) : m_choices.Wild();
        const double y = m_choices.Chance(95) ? m_choices.Below(900) : m_choices.Wild();
        PassTime();
        const double time = m_choices.Chance(97) ? m_time - m_choices.Below(8) : m_choices.Wild();
        switch (m_choices.Below(16)) {
        case 0:
        case 1:
        case 2: return m_feeder.Down(contact, x, y, time);
        case 3:
        case 4: return m_feeder.Up(contact, x, y, time);
        case 5: return m_feeder.Lost(contact, time);
        case 6: return m_feeder.Cancel(contact, time);
        case 7: return PlayRarely();
        case 8:
        case 9:
        case 10: return Advance();
        default: return m_feeder.Move(contact, x, y, time);
        }
    }

    void End() {
        m_feeder.CancelAll();
        // What waits may be far ahead; after some Advances without a frame nothing does.
        for (int advances = 0, quiet = 0; advances < 2000 && quiet < 5; ++advances) {
            m_now += 100;
            Advance();
            quiet = m_laws.TakeHadFrames() ? 0 : quiet + 1;
        }
        m_laws.DemandNoFinger();
    }

private:
    void PassTime() {
        const int passed = m_choices.Chance(95) ? m_choices.Below(20) : m_choices.Below(5000);
        m_time += passed;
        m_now += passed;
    }
    void Advance() {
        m_laws.BeginAdvance();
        m_feeder.Advance(m_choices.Chance(98) ? m_now : m_choices.Wild());
    }
    void PlayRarely() {
        switch (m_choices.Below(5)) {
        case 0: return m_feeder.CancelAll();
        case 1: m_feeder.ForgetAll(); return m_laws.Forget();
        case 2: return SetGeometry();
        case 3: m_time += m_choices.Wild(); return;
        default: (void)m_feeder.Mouse(du::Symbol("MsgMouseLeftDown"), m_choices.Wild(), 1, 0); return;
        }
    }
    void SetGeometry() {
        constexpr std::uint32_t sizes[] = {1000, 0, 1, 2, 0xffffffff};
        const input::Geometry geometry{m_choices.OneOf(sizes), m_choices.OneOf(sizes), m_choices.Chance(50),
                                       m_choices.Chance(90) ? 1 : m_choices.Wild(),
                                       static_cast<input::Turn>(m_choices.Below(4))};
        m_feeder.SetGeometry(geometry);
        if (m_isPlaced) {
            m_laws.AllowAnyPixel();
        } else {
            m_laws.SetSize(geometry.width, geometry.height);
        }
        m_isPlaced = true;
    }

    Choices& m_choices;
    Laws& m_laws;
    input::TouchFeeder m_feeder;
    double m_time = 5e5;
    double m_now = 0;
    bool m_isPlaced = false;
};

}  // namespace

std::string PlayHostileContacts(Choices& choices, int maxEvents, std::vector<std::int64_t>& sent) {
    input::FeederOptions options;
    options.feeding = choices.Chance(70) ? input::Feeding::FixedStep : input::Feeding::EveryReport;
    options.ids = choices.Chance(70) ? input::RecordIds::Numbered : input::RecordIds::Own;
    options.mouseEcho = choices.Chance(50);
    options.touchClockStartMs = choices.Chance(80) ? 1000 : choices.Integer();
    Laws laws(options.feeding == input::Feeding::FixedStep, sent);
    HostileToolkit toolkit(choices, laws, options);
    for (int event = 0; event < maxEvents && !choices.AreOver() && laws.Broken().empty(); ++event) {
        toolkit.Play();
    }
    toolkit.End();
    return laws.Broken();
}

}  // namespace fuzz
