// Reads lines and the balls at their ends, which is what the spin-centre cross is made of, and passes over anything
// else. Hidden markups and lines give nothing.
#include "viewer/MarkupLines.h"

#include "host/hxmu/MarkupData.h"
#include "host/hxmu/Model.h"

namespace viewer {
namespace {

const hxmu::ModelBase* GetContentTree(const hxk::Markup& markup) {
    return markup.GetContent() ? markup.GetContent()->GetModelBase().Get() : nullptr;
}

// Calls `visit` with every leader line of a tree until it answers true. Placements do not nest: each primitive's own
// one leads straight into the world.
template <class Visit>
bool VisitLines(const hxmu::ModelBase* model, const Visit& visit) {
    if (const auto* line = dynamic_cast<const hxmu::ModelLeaderLine*>(model)) {
        return visit(*line);
    }
    if (const auto* container = dynamic_cast<const hxmu::ModelContainer*>(model)) {
        for (const du::SmartPtr<hxmu::ModelBase>& child : container->GetModels()) {
            if (VisitLines(child.Get(), visit)) {
                return true;
            }
        }
    }
    return false;
}

double GetBallRadius(const hxmu::ModelLeaderLine& line) {
    const auto* ball = dynamic_cast<const hxmu::ModelSphere*>(line.GetArrowHeadRound().Get());
    return ball != nullptr ? static_cast<double>(ball->GetSize()) : 0.0;
}

void AppendLine(const hxmu::ModelLeaderLine& line, std::vector<MarkupLine>& lines) {
    const du::SmartPtr<hxmu::RenderAttrsVector>& attributes = line.GetRenderAttrsVector();
    if (attributes && attributes->visible == 0) {
        return;
    }
    const std::vector<dg::DPoint3D>& points = line.GetPoints();
    for (std::size_t i = 1; i < points.size(); ++i) {
        MarkupLine stretch;
        stretch.origin = points[i - 1];
        stretch.origin *= line.GetLocation();
        stretch.direction = points[i] - points[i - 1];
        stretch.direction *= line.GetLocation();
        stretch.width = static_cast<double>(line.GetSizes()[0]);
        stretch.ballRadius = i + 1 == points.size() ? GetBallRadius(line) : 0.0;
        if (attributes) {
            stretch.color = attributes->color;
        }
        lines.push_back(stretch);
    }
}

}  // namespace

void AppendMarkupLines(const hxk::Markup& markup, std::vector<MarkupLine>& lines) {
    if (!markup.IsVisible()) {
        return;
    }
    VisitLines(GetContentTree(markup), [&](const hxmu::ModelLeaderLine& line) {
        AppendLine(line, lines);
        return false;
    });
}

dg::DPoint3D GetMarkupPosition(const hxk::Markup& markup) {
    dg::DPoint3D position;
    VisitLines(GetContentTree(markup), [&](const hxmu::ModelLeaderLine& line) {
        position = line.GetLocation().GetPos();
        return true;
    });
    return position;
}

}  // namespace viewer
