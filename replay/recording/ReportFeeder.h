// What a device reports, as the contacts that a feeder takes.
#pragma once

#include "input/TouchFeeder.h"
#include "replay/recording/Mounting.h"
#include "replay/recording/ReportList.h"

#include <vector>

namespace replay {

// Tells a feeder what each report says of every finger: that it has landed, where it is, or that it has gone.
class ReportFeeder {
public:
    // Neither is owned, and both outlive this object. The feeder counts rows upward and in pixels, as the mapping does.
    ReportFeeder(input::TouchFeeder& feeder, const PanelMapping& mapping) : m_feeder(feeder), m_mapping(mapping) {}

    // Fingers that rest are told of, too: of them the device knows where they are.
    void Tell(const Report& report);

private:
    input::TouchFeeder& m_feeder;
    const PanelMapping& m_mapping;
    std::vector<Contact> m_contacts;  // of the latest report
};

}  // namespace replay
