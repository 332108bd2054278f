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

TEST(Environment, AProviderAnswersInPlaceOfTheProcess) {
    struct Switches : platform::EnvironmentProvider {
        bool IsPresent(const char* name) const override { return std::string_view(name) == "TEST_ON"; }
    } switches;
    constexpr const char* Name = "TOUCHNAV_TEST_SWITCH";
    ::unsetenv(Name);
    EXPECT_FALSE(platform::IsEnvironmentVariablePresent(Name));
    ::setenv(Name, "", 1);
    EXPECT_TRUE(platform::IsEnvironmentVariablePresent(Name)) << "an empty value counts";
    platform::SetEnvironmentProvider(&switches);
    EXPECT_FALSE(platform::IsEnvironmentVariablePresent(Name));
    EXPECT_TRUE(platform::IsEnvironmentVariablePresent("TEST_ON"));
    platform::SetEnvironmentProvider(nullptr);
    EXPECT_TRUE(platform::IsEnvironmentVariablePresent(Name));
    ::unsetenv(Name);
}

TEST(Displays, AnswerTheTwoResolutionsOnly) {
    const platform::DeviceContext screen = platform::GetDC(nullptr);
    EXPECT_EQ(platform::GetDeviceCaps(screen, platform::LogPixelsX), 96);
    platform::SetPixelsPerInch(120, 0);
    EXPECT_EQ(platform::GetDeviceCaps(screen, platform::LogPixelsX), 120);
    EXPECT_EQ(platform::GetDeviceCaps(screen, platform::LogPixelsY), 0);
    EXPECT_EQ(platform::GetDeviceCaps(screen, 0), 0);
    platform::ReleaseDC(nullptr, screen);
    EXPECT_EQ(platform::GetDeviceCaps(platform::DeviceContext{}, platform::LogPixelsX), 0) << "no screen";
    platform::SetPixelsPerInch(96, 96);
}

}  // namespace
