// zeanim plot: curves as the library evaluates them, drawn as an SVG picture.

#include "zeTool.h"

#include <zeAnimation/zeAnimationController.h>
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationObject.h>
#include <zeAnimation/zeAnimationUtils.h>
#include <zeAnimation/zeControlPoint2D.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

// The picture's layout, in pixels.
const double width = 960.0;
const double left = 70.0;
const double right = 30.0;
const double plotHeight = 360.0;
const double laneRow = 16.0; // one row of range bars above the plot
const int maxLaneRows = 12;  // bars that need more rows than this are left out of the lane
const int legendColumns = 3;
const int maxLegendRows = 12; // the legend names at most this many rows of curves
const double legendRow = 18.0;
const int samplesPerCurve = 600;
// Keys and handles are drawn while there are at most this many keys in view: beyond, they would
// hide the curves (and make a picture of many megabytes).
const std::size_t maxKeysDrawn = 3000;

struct Point
{
    double x;
    double y;
};

std::string fixed(double value)
{
    char text[32];
    std::snprintf(text, sizeof(text), "%.1f", value);
    return text;
}

std::string xmlText(const std::string& text)
{
    std::string out;
    for (char c : text) {
        switch (c) {
        case '&':
            out += "&amp;";
            break;
        case '<':
            out += "&lt;";
            break;
        case '>':
            out += "&gt;";
            break;
        case '"':
            out += "&quot;";
            break;
        default:
            // Control characters cannot stand in XML.
            out += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
        }
    }
    return out;
}

std::string colorOf(const zeAnimationCurve2D* curve)
{
    const osg::Color3f c = zeAnimationUtils::getDefaultCurveColor(curve->getAnimationField());
    char text[8];
    std::snprintf(text, sizeof(text), "#%02x%02x%02x", static_cast<int>(std::lround(c[0] * 255.0f)),
                  static_cast<int>(std::lround(c[1] * 255.0f)), static_cast<int>(std::lround(c[2] * 255.0f)));
    return text;
}

// Grid steps of 1, 2 or 5 times a power of ten, about `count` of them over the range; 0 when the
// range has no usable size.
double niceStep(double range, int count)
{
    const double raw = range / count;
    if (!(raw > 0.0) || !std::isfinite(raw))
        return 0.0;
    const double power = std::pow(10.0, std::floor(std::log10(raw)));
    for (double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= raw)
            return factor * power;
    }
    return 10.0 * power;
}

// Drops the points of a polyline that lie within `tolerance` of the line through their
// neighbours that stay (Douglas-Peucker), so smooth curves cost a few points.
void simplify(const std::vector<Point>& points, std::size_t a, std::size_t b, double tolerance,
              std::vector<bool>& keep)
{
    if (b <= a + 1)
        return;
    const double dx = points[b].x - points[a].x;
    const double dy = points[b].y - points[a].y;
    const double length = std::sqrt(dx * dx + dy * dy);
    double worst = -1.0;
    std::size_t at = a;
    for (std::size_t i = a + 1; i < b; ++i) {
        const double px = points[i].x - points[a].x;
        const double py = points[i].y - points[a].y;
        const double d = length > 0.0 ? std::fabs(px * dy - py * dx) / length : std::sqrt(px * px + py * py);
        if (d > worst) {
            worst = d;
            at = i;
        }
    }
    if (worst <= tolerance)
        return;
    keep[at] = true;
    simplify(points, a, at, tolerance, keep);
    simplify(points, at, b, tolerance, keep);
}

// The multiples of `step` from `low` to `high`; none for a step of 0.
std::vector<double> ticks(double low, double high, double step)
{
    std::vector<double> result;
    if (!(step > 0.0))
        return result;
    const double first = std::ceil(low / step);
    for (int i = 0; i <= 50 && (first + i) * step <= high + step * 1e-6; ++i) {
        const double value = (first + i) * step;
        result.push_back(std::fabs(value) < step * 1e-6 ? 0.0 : value);
    }
    return result;
}

class Plot
{
public:
    Plot(const std::string& file, const std::vector<zeAnimationObject*>& objects,
         const std::vector<zeAnimationCurve2D*>& curves)
        : file(file), objects(objects), curves(curves)
    {}

    void range(const zeToolArguments& arguments)
    {
        from = zeAnimationObject::EmptyLow;
        to = zeAnimationObject::EmptyHigh;
        for (const zeAnimationCurve2D* curve : curves) {
            if (curve->getPointCount() == 0)
                continue;
            from = std::min(from, static_cast<double>(curve->getBegin()));
            to = std::max(to, static_cast<double>(curve->getEnd()));
        }
        if (from > to) {
            from = 0.0;
            to = 1.0;
        }
        if (arguments.hasFrom)
            from = arguments.from;
        if (arguments.hasTo)
            to = arguments.to;
        // A range too short to draw (or none at all, past the curves) is widened.
        if (!(to - from > std::max(1e-3, std::fabs(from) * 1e-6))) {
            const double half = std::max(1.0, std::fabs(from) * 1e-3);
            if (arguments.hasFrom && !arguments.hasTo) {
                to = from + 2.0 * half;
            } else if (arguments.hasTo && !arguments.hasFrom) {
                from = to - 2.0 * half;
            } else {
                const double centre = (from + to) / 2.0;
                from = centre - half;
                to = centre + half;
            }
        }
        sample();
        collectBands();
    }

    std::string svg() const
    {
        const std::size_t shown =
            std::min(curves.size(), static_cast<std::size_t>(legendColumns * maxLegendRows));
        const int legendRows =
            static_cast<int>((shown + legendColumns - 1) / legendColumns) + (shown < curves.size() ? 1 : 0);
        const double plotTop = 40.0 + laneRows * laneRow + (laneRows ? 8.0 : 0.0);
        const double plotBottom = plotTop + plotHeight;
        const double height = plotBottom + 44.0 + legendRows * legendRow + 10.0;
        Frame frame{plotTop, plotBottom};

        std::string out = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                          "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" +
                          fixed(width) + "\" height=\"" + fixed(height) + "\" viewBox=\"0 0 " + fixed(width) +
                          " " + fixed(height) +
                          "\" font-family=\"DejaVu Sans, Helvetica, Arial, sans-serif\" font-size=\"12\">\n";
        out += "<title>" + xmlText(file) + "</title>\n";
        out += "<defs>\n<clipPath id=\"plot\"><rect x=\"" + fixed(left) + "\" y=\"" + fixed(plotTop) +
               "\" width=\"" + fixed(width - left - right) + "\" height=\"" + fixed(plotHeight) +
               "\"/></clipPath>\n";
        for (const std::string& color : colors())
            out += "<marker id=\"end" + color.substr(1) +
                   "\" viewBox=\"0 0 8 8\" refX=\"4\" refY=\"4\" markerWidth=\"6\" markerHeight=\"6\">"
                   "<rect x=\"1\" y=\"1\" width=\"6\" height=\"6\" fill=\"white\" stroke=\"" +
                   color + "\" stroke-width=\"1.5\"/></marker>\n";
        out += "</defs>\n<rect width=\"100%\" height=\"100%\" fill=\"white\"/>\n";
        out += "<text x=\"" + fixed(left) + "\" y=\"22\" font-size=\"14\" font-weight=\"bold\">" +
               xmlText(title()) + "</text>\n";
        out += bandsSvg(frame);
        out += gridSvg(frame);
        out += curvesSvg(frame);
        out += legendSvg(plotBottom + 44.0, shown);
        return out + "</svg>\n";
    }

private:
    struct Frame
    {
        double top;
        double bottom;
    };

    struct Band
    {
        const zeAnimationObject* object;
        int row;
    };

    std::string file;
    const std::vector<zeAnimationObject*>& objects;
    const std::vector<zeAnimationCurve2D*>& curves;
    double from = 0.0;
    double to = 1.0;
    double low = 0.0;
    double high = 1.0;
    // Per curve: runs of evaluated (frame, value) points, broken where evaluation yields none.
    std::vector<std::vector<std::vector<Point>>> runs;
    std::vector<Band> bands;
    int laneRows = 0;

    double px(double frame) const { return left + (frame - from) / (to - from) * (width - left - right); }
    double py(const Frame& f, double value) const
    {
        return f.bottom - (value - low) / (high - low) * (f.bottom - f.top);
    }

    std::string title() const
    {
        std::string text =
            file + ": " + std::to_string(curves.size()) + (curves.size() == 1 ? " curve" : " curves");
        if (objects.size() == 1)
            text += " of " + std::string(zeToolKindName(objects[0]->getTypeID())) + " \"" +
                    objects[0]->getName() + "\"";
        return text + ", frames " + zeToolNumber(static_cast<float>(from)) + " to " +
               zeToolNumber(static_cast<float>(to));
    }

    std::vector<std::string> colors() const
    {
        std::set<std::string> unique;
        for (const zeAnimationCurve2D* curve : curves)
            unique.insert(colorOf(curve));
        return std::vector<std::string>(unique.begin(), unique.end());
    }

    // Curves that share a colour are told apart by their dashes.
    std::string dashOf(std::size_t index) const
    {
        static const char* const dashes[] = {"", "8 4", "2 3", "10 3 2 3"};
        std::size_t same = 0;
        for (std::size_t i = 0; i < index; ++i)
            same += colorOf(curves[i]) == colorOf(curves[index]) ? 1 : 0;
        const char* dash = dashes[same % 4];
        return *dash ? std::string(" stroke-dasharray=\"") + dash + "\"" : std::string();
    }

    // Evaluates every curve across the frames shown, between its first and last key, and finds
    // the value range the picture needs (keys and handles in view included).
    void sample()
    {
        low = 1e300;
        high = -1e300;
        const auto cover = [&](double x, double y) {
            if (x >= from && x <= to) {
                low = std::min(low, y);
                high = std::max(high, y);
            }
        };
        for (zeAnimationCurve2D* curve : curves) {
            runs.emplace_back();
            const double begin = std::max(from, static_cast<double>(curve->getBegin()));
            const double end = std::min(to, static_cast<double>(curve->getEnd()));
            std::vector<Point>* run = nullptr;
            for (int s = 0; curve->getPointCount() >= 2 && begin <= end && s <= samplesPerCurve; ++s) {
                const float frame = static_cast<float>(begin + (end - begin) * s / samplesPerCurve);
                float value = 0.0f;
                if (!zeAnimationController::computeCurveValue(curve, frame, value) || !std::isfinite(value)) {
                    run = nullptr;
                    continue;
                }
                if (!run) {
                    runs.back().emplace_back();
                    run = &runs.back().back();
                }
                run->push_back(Point{frame, value});
                cover(frame, value);
            }
            for (const zeControlPoint2D* key : keys(curve)) {
                cover(key->getX(), key->getY());
                cover(key->getInTangentX(), key->getInTangentY());
                cover(key->getOutTangentX(), key->getOutTangentY());
            }
        }
        if (low > high) {
            low = 0.0;
            high = 1.0;
        }
        const double margin =
            std::max((high - low) * 0.08, std::max(1e-3, std::max(std::fabs(low), std::fabs(high)) * 1e-3));
        low -= margin;
        high += margin;
    }

    static std::vector<const zeControlPoint2D*> keys(const zeAnimationCurve2D* curve)
    {
        std::vector<const zeControlPoint2D*> result;
        for (const auto& entry : curve->getPoints())
            result.push_back(entry.second);
        return result;
    }

    // The blocks holding the curves and the clips above them (and the selected object), packed
    // into rows so that bars in one row do not overlap. Clips come first, on rows of their own.
    void collectBands()
    {
        std::vector<const zeAnimationObject*> clips;
        std::vector<const zeAnimationObject*> blocks;
        std::set<const zeAnimationObject*> seen;
        const auto take = [&](const zeAnimationObject* o) {
            if (!o || zeToolIsEmptyRange(o->getBegin(), o->getEnd()) || !seen.insert(o).second)
                return;
            if (o->getTypeID() == zeAnimationObject::TypeStrip)
                clips.push_back(o);
            else if (o->getTypeID() == zeAnimationObject::TypeUnit)
                blocks.push_back(o);
        };
        for (const zeAnimationObject* o : objects)
            take(o);
        for (const zeAnimationCurve2D* curve : curves) {
            int depth = 0;
            for (const zeAnimationObject* o = curve->getParent(); o && depth <= zeAnimationObject::MaxDepth;
                 o = o->getParent(), ++depth)
                take(o);
        }
        std::vector<double> rowEnds;
        const auto pack = [&](const std::vector<const zeAnimationObject*>& list) {
            const std::size_t firstRow = rowEnds.size();
            for (const zeAnimationObject* o : list) {
                std::size_t row = firstRow;
                while (row < rowEnds.size() && rowEnds[row] > o->getBegin())
                    ++row;
                if (row == rowEnds.size())
                    rowEnds.push_back(0.0);
                rowEnds[row] = o->getEnd();
                if (row < static_cast<std::size_t>(maxLaneRows))
                    bands.push_back(Band{o, static_cast<int>(row)});
            }
        };
        const auto byBegin = [](const zeAnimationObject* a, const zeAnimationObject* b) {
            return a->getBegin() < b->getBegin();
        };
        std::stable_sort(clips.begin(), clips.end(), byBegin);
        std::stable_sort(blocks.begin(), blocks.end(), byBegin);
        pack(clips);
        pack(blocks);
        laneRows = std::min(static_cast<int>(rowEnds.size()), maxLaneRows);
    }

    // Range bars above the plot, and the same ranges as light bands behind the curves.
    std::string bandsSvg(const Frame& f) const
    {
        std::string out = "<g>\n";
        for (const Band& band : bands) {
            const bool clip = band.object->getTypeID() == zeAnimationObject::TypeStrip;
            const double x0 = std::max(left, px(band.object->getBegin()));
            const double x1 = std::min(width - right, px(band.object->getEnd()));
            if (x1 < x0)
                continue;
            const std::string fill = clip ? "#8a8fa8" : "#a9c4e6";
            const double y = 34.0 + band.row * laneRow;
            out += "<rect x=\"" + fixed(x0) + "\" y=\"" + fixed(f.top) + "\" width=\"" +
                   fixed(std::max(x1 - x0, 1.0)) + "\" height=\"" + fixed(f.bottom - f.top) + "\" fill=\"" +
                   fill + "\" fill-opacity=\"" + (clip ? "0.08" : "0.12") + "\"/>\n";
            out += "<rect x=\"" + fixed(x0) + "\" y=\"" + fixed(y) + "\" width=\"" +
                   fixed(std::max(x1 - x0, 2.0)) + "\" height=\"" + fixed(laneRow - 3.0) +
                   "\" rx=\"3\" fill=\"" + fill + "\"/>\n";
            // The name as far as it fits into its bar (about 6 pixels a character).
            const std::size_t fits = static_cast<std::size_t>(std::max(0.0, (x1 - x0 - 8.0) / 6.0));
            std::string name = band.object->getName();
            if (name.size() > fits)
                name = fits >= 4 ? name.substr(0, fits - 2) + ".." : std::string();
            if (!name.empty())
                out += "<text x=\"" + fixed(x0 + 4.0) + "\" y=\"" + fixed(y + laneRow - 6.0) +
                       "\" font-size=\"10\" fill=\"#1d2333\">" + xmlText(name) + "</text>\n";
        }
        return out + "</g>\n";
    }

    std::string gridSvg(const Frame& f) const
    {
        std::string out = "<g stroke=\"#e3e3e3\" stroke-width=\"1\">\n";
        std::string labels = "<g fill=\"#444\" font-size=\"11\">\n";
        const double xStep = niceStep(to - from, 10);
        for (const double x : ticks(from, to, xStep)) {
            const double X = px(x);
            out += "<line x1=\"" + fixed(X) + "\" y1=\"" + fixed(f.top) + "\" x2=\"" + fixed(X) + "\" y2=\"" +
                   fixed(f.bottom) + "\"/>\n";
            labels += "<text x=\"" + fixed(X) + "\" y=\"" + fixed(f.bottom + 16.0) +
                      "\" text-anchor=\"middle\">" + zeToolNumber(static_cast<float>(x)) + "</text>\n";
        }
        const double yStep = niceStep(high - low, 6);
        for (const double y : ticks(low, high, yStep)) {
            const double Y = py(f, y);
            out += "<line x1=\"" + fixed(left) + "\" y1=\"" + fixed(Y) + "\" x2=\"" + fixed(width - right) +
                   "\" y2=\"" + fixed(Y) + "\"/>\n";
            labels += "<text x=\"" + fixed(left - 6.0) + "\" y=\"" + fixed(Y + 4.0) +
                      "\" text-anchor=\"end\">" + zeToolNumber(static_cast<float>(y)) + "</text>\n";
        }
        out += "</g>\n<rect x=\"" + fixed(left) + "\" y=\"" + fixed(f.top) + "\" width=\"" +
               fixed(width - left - right) + "\" height=\"" + fixed(f.bottom - f.top) +
               "\" fill=\"none\" stroke=\"#888\"/>\n";
        labels += "<text x=\"" + fixed((left + width - right) / 2.0) + "\" y=\"" + fixed(f.bottom + 34.0) +
                  "\" text-anchor=\"middle\">frame</text>\n</g>\n";
        return out + labels;
    }

    std::string curvesSvg(const Frame& f) const
    {
        std::size_t inView = 0;
        for (const zeAnimationCurve2D* curve : curves) {
            for (const zeControlPoint2D* key : keys(curve))
                inView += key->getX() >= from && key->getX() <= to ? 1 : 0;
        }
        const bool drawKeys = inView <= maxKeysDrawn;
        std::string out = "<g clip-path=\"url(#plot)\" fill=\"none\">\n";
        for (std::size_t c = 0; c < curves.size(); ++c) {
            const std::string color = colorOf(curves[c]);
            std::string path;
            for (const std::vector<Point>& run : runs[c]) {
                std::vector<Point> screen;
                for (const Point& p : run)
                    screen.push_back(Point{px(p.x), py(f, p.y)});
                std::vector<bool> keep(screen.size(), false);
                keep.front() = keep.back() = true;
                simplify(screen, 0, screen.size() - 1, 0.25, keep);
                for (std::size_t i = 0; i < screen.size(); ++i) {
                    if (keep[i])
                        path += (i == 0 ? "M" : "L") + fixed(screen[i].x) + " " + fixed(screen[i].y);
                }
            }
            if (!path.empty())
                out += "<path d=\"" + path + "\" stroke=\"" + color + "\" stroke-width=\"2\"" + dashOf(c) +
                       "/>\n";
            // Handles (those lying on their key are none), then the keys over them.
            std::string handles;
            std::string dots;
            for (const zeControlPoint2D* key :
                 drawKeys ? keys(curves[c]) : std::vector<const zeControlPoint2D*>()) {
                if (key->getX() < from || key->getX() > to)
                    continue;
                const double kx = px(key->getX());
                const double ky = py(f, key->getY());
                for (const Point h : {Point{key->getInTangentX(), key->getInTangentY()},
                                      Point{key->getOutTangentX(), key->getOutTangentY()}}) {
                    if (h.x == key->getX() && h.y == key->getY())
                        continue;
                    handles += "<line x1=\"" + fixed(kx) + "\" y1=\"" + fixed(ky) + "\" x2=\"" +
                               fixed(px(h.x)) + "\" y2=\"" + fixed(py(f, h.y)) + "\"/>\n";
                }
                dots += "<circle cx=\"" + fixed(kx) + "\" cy=\"" + fixed(ky) + "\" r=\"4\"/>\n";
            }
            if (!handles.empty())
                out += "<g stroke=\"" + color +
                       "\" stroke-width=\"1\" stroke-opacity=\"0.8\" marker-end=\"url(#end" +
                       color.substr(1) + ")\">\n" + handles + "</g>\n";
            if (!dots.empty())
                out += "<g fill=\"" + color + "\" stroke=\"white\" stroke-width=\"1.5\">\n" + dots + "</g>\n";
        }
        return out + "</g>\n";
    }

    std::string legendSvg(double top, std::size_t shown) const
    {
        std::string out = "<g font-size=\"11\" fill=\"#222\">\n";
        const double column = (width - left - right) / legendColumns;
        for (std::size_t i = 0; i < shown; ++i) {
            const double x = left + static_cast<double>(i % legendColumns) * column;
            const double y = top + static_cast<double>(i / legendColumns) * legendRow;
            const zeAnimationObject* holder = curves[i]->getParent();
            const std::string label =
                zeToolFieldLabel(curves[i]) + (holder ? " (" + holder->getName() + ")" : std::string());
            out += "<line x1=\"" + fixed(x) + "\" y1=\"" + fixed(y - 4.0) + "\" x2=\"" + fixed(x + 22.0) +
                   "\" y2=\"" + fixed(y - 4.0) + "\" stroke=\"" + colorOf(curves[i]) +
                   "\" stroke-width=\"2.5\"" + dashOf(i) + "/>\n<text x=\"" + fixed(x + 28.0) + "\" y=\"" +
                   fixed(y) + "\">" + xmlText(label) + "</text>\n";
        }
        if (shown < curves.size()) {
            const double y =
                top + static_cast<double>((shown + legendColumns - 1) / legendColumns) * legendRow;
            out += "<text x=\"" + fixed(left) + "\" y=\"" + fixed(y) + "\" fill=\"#666\">and " +
                   std::to_string(curves.size() - shown) + " more curves</text>\n";
        }
        return out + "</g>\n";
    }
};

} // namespace

int zeToolPlot(const zeToolArguments& arguments)
{
    std::vector<zeAnimationObject*> objects;
    std::vector<zeAnimationCurve2D*> curves;
    if (!zeToolSelection(arguments, objects, curves))
        return zeToolFailed;
    if (curves.empty()) {
        zeToolError("no curves to plot in " + arguments.file);
        return zeToolFailed;
    }
    Plot plot(arguments.file, objects, curves);
    plot.range(arguments);
    zeToolOutput output;
    if (!output.open(arguments.output))
        return zeToolFailed;
    output.write(plot.svg());
    return output.close() ? zeToolDone : zeToolFailed;
}
