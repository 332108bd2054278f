// How a frame comes in: which pipeline it drives, and what of it is stored.
#include "tests/support/FingerScript.h"

#include <gtest/gtest.h>

#include <algorithm>

#include <limits>

namespace tests {
namespace {

using touch::TouchState;

// A table with these slots taken from the front and the others free.
std::array<TouchState, 10> Table(std::initializer_list<TouchState> taken) {
    std::array<TouchState, 10> table;
    std::copy(taken.begin(), taken.end(), table.begin());
    return table;
}

TEST(TouchIntake, TheKindOfViewChoosesThePipeline) {
    const struct {
        const char* kind;
        std::optional<bool> answer;
        touch::GestureType gesture;
        bool stored;
    } rows[] = {{"shapeview", true, touch::GestureSpin, true},
                {"drawingview", true, touch::Gesture2DPan, true},
                {"schematicfigureview", true, touch::Gesture2DPan, true},
                {"other", true, touch::GestureNone, false},
                {"", false, touch::GestureNone, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.kind);
        FingerScript s = FingerScript::OnShapeView();
        s.SetView(*row.kind != '\0' ? std::optional(PageView(row.kind)) : std::nullopt).Down(4, 100, 200);
        EXPECT_EQ(s.Answer(), row.answer);
        EXPECT_EQ(s.Gesture(), row.gesture);
        EXPECT_EQ(s.Inspect().GetSlots()[0].id, row.stored ? 4 : -1);
        EXPECT_EQ(s.Inspect().IsTouchActive(), row.stored);
        EXPECT_TRUE(s.Inspect().IsTouchSeen());
    }
}

TEST(TouchIntake, StoresRecordsUpToTheFirstGapButSkipsAnEmptyFirstOne) {
    constexpr int D = workflow::TouchDown;
    constexpr int M = workflow::TouchMove;
    constexpr int U = workflow::TouchUp;
    const struct {
        const char* name;
        std::vector<workflow::TouchRecord> records;
        TouchState expected;
    } rows[] = {
        {"down", {{7, 10, 20, 30, D}}, {7, 10, 20, 0, 0, 30, 0, touch::TSDown, false}},
        {"down and up is down", {{7, 10, 20, 30, D | U}}, {7, 10, 20, 0, 0, 30, 0, touch::TSDown, false}},
        {"move and up is move", {{7, 10, 20, 30, M | U}}, {7, 10, 20, 0, 0, 30, 0, touch::TSMove, false}},
        {"up", {{7, 10, 20, 30, U}}, {7, 10, 20, 0, 0, 30, 0, touch::TSUp, false}},
        {"no known flag", {{7, 10, 20, 30, 8}}, {7, 10, 20, 0, 0, 30, 0, touch::TSNone, false}},
        {"zero coordinate", {{7, 0, 20, 30, D}}, {7, 0, 20, 0, 0, 30, 0, touch::TSDown, false}},
        {"values below zero", {{7, -1, -2, -3, D}}, {7, 0, 0, 0, 0, 0, 0, touch::TSDown, false}},
        {"id 0", {{0, 10, 20, 30, D}}, {0, 10, 20, 0, 0, 30, 0, touch::TSDown, false}},
        {"empty first record", {{-1, 0, 0, 0, 0}, {4, 11, 21, 31, M}}, {4, 11, 21, 0, 0, 31, 0, touch::TSMove, false}},
        {"gap",
         {{-1, 0, 0, 0, 0}, {4, 11, 21, 31, M}, {-1, 0, 0, 0, 0}, {5, 12, 22, 32, M}},
         {4, 11, 21, 0, 0, 31, 0, touch::TSMove, false}},
        {"the same finger twice",
         {{7, 10, 20, 30, D}, {7, 15, 25, 35, M}},
         {7, 10, 20, 15, 25, 30, 35, touch::TSMove, false}},
    };
    for (const std::int32_t count : {0, 1, 2, 10, -1}) {
        for (const auto& row : rows) {
            SCOPED_TRACE(std::string(row.name) + ", count " + std::to_string(count));
            FingerScript s = FingerScript::OnShapeView();
            s.Frame(row.records, count);
            EXPECT_EQ(s.Inspect().GetSlots(), Table({row.expected})) << "the count does not bound the records";
            EXPECT_EQ(s.Inspect().GetFingerCount(), count);
        }
    }
}

TEST(TouchIntake, LaterRecordsKeepStartAndEveryValueThatTheyLack) {
    FingerScript s = FingerScript::OnShapeView();
    s.Frame({{7, 10, 20, 30, 2}}, 1).Frame({{7, 11, 21, 31, 1}}, 1).Frame({{7, 0, 22, 0, 1}}, 1);
    EXPECT_EQ(s.Inspect().GetSlots(), Table({{7, 10, 20, 11, 22, 30, 31, touch::TSMove, false}}));
}

TEST(TouchIntake, OnlyASingleFingerGoingDownStartsFromACleanTable) {
    const struct {
        const char* name;
        std::vector<workflow::TouchRecord> records;
        std::int32_t count;
        bool cleared;
    } rows[] = {{"one finger down", {{8, 50, 50, 60, 2}}, 1, true},
                {"one finger moving", {{8, 50, 50, 60, 1}}, 1, false},
                {"one finger up", {{8, 50, 50, 60, 4}}, 1, false},
                {"a second finger down", {{7, 10, 20, 60, 1}, {8, 50, 50, 60, 2}}, 2, false},
                {"down with a count of two", {{8, 50, 50, 60, 2}}, 2, false},
                {"down in the second record", {{-1, 0, 0, 0, 0}, {8, 50, 50, 60, 2}}, 1, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        FingerScript s = FingerScript::OnShapeView();
        s.Down(7, 10, 20);
        s.Frame(row.records, row.count);
        EXPECT_EQ(s.Inspect().GetSlots()[0].id, row.cleared ? 8 : 7);
        EXPECT_EQ(s.Inspect().GetSlots()[1].id, row.cleared ? -1 : 8);
    }
}

}  // namespace
}  // namespace tests
