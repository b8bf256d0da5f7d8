#include <OpenSG/OSGDrawable.h>

namespace osg {

FieldContainerType& DrawableBase::getClassType()
{
    static FieldContainerType type("Drawable", &NodeCore::getClassType(), nullptr, nullptr, {});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(DrawableBase)

DrawableBase::DrawableBase() {}

DrawableBase::DrawableBase(const DrawableBase& source) : Inherited(source) {}

DrawableBase::~DrawableBase() = default;

Drawable::Drawable() = default;

Drawable::Drawable(const Drawable& source) : Inherited(source) {}

Drawable::~Drawable() = default;

namespace {
[[maybe_unused]] const bool registered = (Drawable::getClassType(), true);
} // namespace

} // namespace osg
