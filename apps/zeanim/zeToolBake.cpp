// zeanim bake: curves sampled frame by frame, as global playback evaluates them, into CSV.

#include "zeTool.h"

#include <zeAnimation/zeAnimationController.h>
#include <zeAnimation/zeAnimationCurve2D.h>
#include <zeAnimation/zeAnimationField.h>
#include <zeAnimation/zeAnimationManager.h>
#include <zeAnimation/zeAnimationObject.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace {

std::string csvCell(const std::string& text)
{
    if (text.find_first_of(",\"\r\n") == std::string::npos &&
        (text.empty() || (text.front() != ' ' && text.back() != ' ')))
        return text;
    std::string quoted = "\"";
    for (char c : text) {
        if (c == '"')
            quoted += '"';
        quoted += c;
    }
    return quoted + "\"";
}

// "box slides/translationX": the block (or whatever holds the curve) and the field's attribute;
// names that would still be shared by two columns take the curve's id.
std::vector<std::string> columnNames(const std::vector<zeAnimationCurve2D*>& curves)
{
    std::vector<std::string> names;
    std::map<std::string, int> uses;
    for (const zeAnimationCurve2D* curve : curves) {
        const zeAnimationObject* holder = curve->getParent();
        names.push_back((holder ? holder->getName() + "/" : std::string()) + zeToolFieldLabel(curve));
        ++uses[names.back()];
    }
    for (std::size_t i = 0; i < curves.size(); ++i) {
        if (uses[names[i]] > 1)
            names[i] += " #" + std::to_string(curves[i]->getId());
    }
    return names;
}

} // namespace

int zeToolBake(const zeToolArguments& arguments)
{
    std::vector<zeAnimationObject*> objects;
    std::vector<zeAnimationCurve2D*> curves;
    if (!zeToolSelection(arguments, objects, curves))
        return zeToolFailed;

    // The frames: the selection's range, as global playback takes the union of its objects.
    float from = zeAnimationObject::EmptyLow;
    float to = zeAnimationObject::EmptyHigh;
    for (zeAnimationObject* object : objects) {
        if (zeToolIsEmptyRange(object->getBegin(), object->getEnd()))
            continue;
        from = std::min(from, object->getBegin());
        to = std::max(to, object->getEnd());
    }
    if (arguments.hasFrom)
        from = arguments.from;
    if (arguments.hasTo)
        to = arguments.to;
    const double rows =
        from <= to ? std::floor((static_cast<double>(to) - from) / arguments.step) + 1.0 : 0.0;
    if (rows > zeToolMaxRows) {
        zeToolError("more than 10,000,000 frames from " + zeToolNumber(from) + " to " + zeToolNumber(to) +
                    "; use a larger --step");
        return zeToolFailed;
    }

    // Each curve writes into a field of its own, where its value is read back after playback's
    // evaluation of the frame: curves sharing a field would otherwise hide each other. The fields
    // name no scene container, so nothing is written anywhere else. A curve without a field stays
    // without one, as playback gives it no value.
    zeAnimationManager* manager = zeAnimationManager::the();
    std::vector<zeAnimationField*> fields;
    for (zeAnimationCurve2D* curve : curves) {
        zeAnimationField* field = nullptr;
        if (zeAnimationField* original = curve->getAnimationField()) {
            field = manager->createField(0);
            field->name = original->name;
            field->attribute = original->attribute;
            field->valuePos = original->valuePos;
            curve->setAnimationField(field);
        }
        fields.push_back(field);
    }

    zeToolOutput output;
    if (!output.open(arguments.output))
        return zeToolFailed;
    std::string line = "frame";
    for (const std::string& name : columnNames(curves))
        line += "," + csvCell(name);
    output.write(line + "\n");
    zeAnimationController* controller = zeAnimationController::the();
    const float noValue = std::numeric_limits<float>::quiet_NaN();
    for (double row = 0.0; row < rows; ++row) {
        const float frame = static_cast<float>(from + row * arguments.step);
        for (zeAnimationField* field : fields) {
            if (field)
                field->value = noValue;
        }
        for (zeAnimationObject* object : objects)
            controller->evaluateObject(object, frame, false);
        line = zeToolNumber(frame);
        for (zeAnimationField* field : fields) {
            line += ',';
            if (field && !std::isnan(field->value))
                line += zeToolNumber(field->value);
        }
        output.write(line + "\n");
    }
    return output.close() ? zeToolDone : zeToolFailed;
}
