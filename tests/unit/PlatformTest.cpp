// What a host provides for the whole process: texts, the trace channel, switches and the screen's resolution. Every
// test leaves the process as it found it.
#include "host/dp/HXTracer.h"
#include "host/du/Localizer.h"
#include "host/platform/Display.h"
#include "host/platform/Environment.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

using testing::ElementsAre;

TEST(Localizers, ReadTheHostsTableOrAnswerAsAsked) {
    struct Tables : du::StringTableProvider {
        const std::string* FindText(const char* table, const char* key) const override {
            return std::string_view(table) == "base" && std::string_view(key) == "Greeting" ? &greeting : nullptr;
        }
        const std::string greeting = "Good morning";
    } tables;
    const du::Localizer localizer("base");
    EXPECT_EQ(localizer.LocalizeMessage("Greeting", du::Localizer::ReturnKey), "Greeting") << "no tables";
    EXPECT_EQ(localizer.LocalizeMessage("Greeting", du::Localizer::ReturnEmpty), "") << "no tables";

    du::Localizer::SetProvider(&tables);
    EXPECT_EQ(&localizer.LocalizeMessage("Greeting", du::Localizer::ReturnKey), &tables.greeting) << "not a copy";
    EXPECT_EQ(localizer.LocalizeMessage("greeting", du::Localizer::ReturnKey), "greeting");
    EXPECT_EQ(du::Localizer("other").LocalizeMessage("Greeting", du::Localizer::ReturnEmpty), "");
    du::Localizer::SetProvider(nullptr);
}

struct Sink : dp::TraceSink {
    bool IsEnabled(const char* module, const char* className) const override {
        return enabled && std::string_view(module) == "touch" && std::string_view(className) == "Test";
    }
    void Write(const char* module, const char* className, dp::TraceType type, const std::string& text) override {
        texts.push_back(std::string(module) + "/" + className + "/" + std::to_string(type) + ": " + text);
    }
    bool enabled = true;
    std::vector<std::string> texts;
};

TEST(Tracers, GiveOneTextForEachStatementToAnEnabledChannel) {
    Sink sink;
    const dp::HXTracer tracer("touch", "Test");
    tracer(dp::TraceError) << "nobody listens";
    dp::HXTracer::SetSink(&sink);
    tracer(dp::TraceError) << "radius " << 2.5 << ", id " << -1 << '\n';
    tracer(dp::TraceInfo) << "second";
    dp::HXTracer("touch", "Other")(dp::TraceError) << "another channel";
    sink.enabled = false;
    tracer(dp::TraceError) << "dropped";
    sink.enabled = true;
    {
        dp::TraceFormatter text = tracer(dp::TraceError);
        text << "outlives its sink";
        dp::HXTracer::SetSink(nullptr);
    }
    EXPECT_THAT(sink.texts, ElementsAre("touch/Test/0: radius 2.5, id -1\n", "touch/Test/1: second"));
}

constexpr const char* TestSwitch = "TOUCHNAV_TEST_SWITCH";

void SetVariable(const char* value) {
#if defined(_WIN32)
    ::_putenv_s(TestSwitch, value);
#else
    ::setenv(TestSwitch, value, 1);
#endif
}

void RemoveVariable() {
#if defined(_WIN32)
    ::_putenv_s(TestSwitch, "");  // its C library has no empty variables
#else
    ::unsetenv(TestSwitch);
#endif
}

TEST(Environment, AProviderAnswersInPlaceOfTheProcess) {
    struct Switches : platform::EnvironmentProvider {
        bool IsPresent(const char* name) const override { return std::string_view(name) == "TEST_ON"; }
    } switches;
    RemoveVariable();
    EXPECT_FALSE(platform::IsEnvironmentVariablePresent(TestSwitch));
#if !defined(_WIN32)
    SetVariable("");
    EXPECT_TRUE(platform::IsEnvironmentVariablePresent(TestSwitch)) << "an empty value counts";
#endif
    SetVariable("0");
    EXPECT_TRUE(platform::IsEnvironmentVariablePresent(TestSwitch)) << "any value counts";
    platform::SetEnvironmentProvider(&switches);
    EXPECT_FALSE(platform::IsEnvironmentVariablePresent(TestSwitch));
    EXPECT_TRUE(platform::IsEnvironmentVariablePresent("TEST_ON"));
    platform::SetEnvironmentProvider(nullptr);
    EXPECT_TRUE(platform::IsEnvironmentVariablePresent(TestSwitch));
    RemoveVariable();
}

// What the system's own setting is, where the test's caller chose one; else that of an unscaled screen.
int GetSystemPixelsPerInch() {
    const char* chosen = std::getenv("TOUCHNAV_SYSTEM_PIXELS_PER_INCH");
    return chosen != nullptr ? std::stoi(chosen) : 96;
}

TEST(Displays, AnswerWhatTheSystemSaysUntilTheHostSaysOtherwise) {
    const platform::DeviceContext screen = platform::GetDC(nullptr);
    const auto ask = [&](int index) { return platform::GetDeviceCaps(screen, index); };
    EXPECT_EQ(ask(platform::LogPixelsX), GetSystemPixelsPerInch());
    EXPECT_EQ(ask(platform::LogPixelsY), GetSystemPixelsPerInch());
    platform::SetPixelsPerInch(120, 0);
    EXPECT_EQ(ask(platform::LogPixelsX), 120);
    EXPECT_EQ(ask(platform::LogPixelsY), 0);
    EXPECT_EQ(ask(0), 0) << "only the two resolutions";
    EXPECT_EQ(platform::GetDeviceCaps(platform::DeviceContext{}, platform::LogPixelsX), 0) << "no screen";
    platform::UseSystemPixelsPerInch();
    EXPECT_EQ(ask(platform::LogPixelsX), GetSystemPixelsPerInch());
    EXPECT_EQ(ask(0), 0) << "only the two resolutions";
    platform::ReleaseDC(nullptr, screen);
}

}  // namespace
