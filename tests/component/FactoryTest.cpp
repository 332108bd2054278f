// Which requests the entry points answer, and what they hand out.
#include "touch/Factory.h"

#include "tests/support/FingerScript.h"

#include <gtest/gtest.h>

#include <string>

namespace tests {
namespace {

struct RequestRow {
    const char* name;
    std::string viewType;
    std::string kind;
    std::string component;
    bool created;
};

const RequestRow RequestRows[] = {
    {"shape view", "shapeview", "workflow", "touch", true},
    {"drawing", "drawingview", "workflow", "touch", true},
    {"image", "imageview", "workflow", "touch", true},
    {"schematic", "ecadschematicview", "workflow", "touch", true},
    {"circuit board", "ecadpcbview", "workflow", "touch", true},
    {"figure", "schematicfigureview", "workflow", "touch", true},
    {"illustration", "illustration2dview", "workflow", "touch", true},
    {"letter case of the view type", "Shapeview", "workflow", "touch", false},
    {"trailing blank", "imageview ", "workflow", "touch", false},
    {"text after a zero byte", std::string("imageview\0x", 11), "workflow", "touch", false},
    {"beginning of a view type", "image", "workflow", "touch", false},
    {"no view type", "", "workflow", "touch", false},
    {"unknown view type", "other", "workflow", "touch", false},
    {"other kind", "imageview", "Workflow", "touch", false},
    {"no kind", "imageview", "", "touch", false},
    {"other component", "imageview", "workflow", "touch2", false},
    {"no component", "imageview", "workflow", "", false},
};

TEST(Factory, CreatesAWorkflowForExactlyTheListedRequests) {
    for (const RequestRow& row : RequestRows) {
        SCOPED_TRACE(row.name);
        du::SmartPtr<workflow::Workflow> component;
        EXPECT_EQ(HXDllCreateComponent(row.viewType, row.kind, row.component, component), row.created);
        ASSERT_EQ(component != nullptr, row.created);
        if (row.created) {
            EXPECT_EQ(component->GetReferenceCount(), 1);
            EXPECT_EQ(component->GetName(), du::Symbol("touch"));
            const auto* touchWorkflow = dynamic_cast<const touch::TouchWorkflow*>(component.Get());
            ASSERT_NE(touchWorkflow, nullptr);
            EXPECT_EQ(touchWorkflow->GetObjectClass(), du::Symbol("touch::TouchWorkflow"));
        }
    }
}

}  // namespace
}  // namespace tests
