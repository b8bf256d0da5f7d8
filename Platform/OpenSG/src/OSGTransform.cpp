#include <OpenSG/OSGTransform.h>

namespace osg {

OSG_FC_CREATE_FUNCTIONS_IMPL(TransformBase, Transform, TransformPtr)

FieldContainerType& TransformBase::getClassType()
{
    static FieldContainerType type("Transform", &Group::getClassType(), nullptr, &osgCreateTransform,
                                   {OSG_SFIELD_DESC(TransformBase, SFMatrix, "matrix", Matrix, false)});
    return type;
}
OSG_FC_TYPE_FUNCTIONS_IMPL(TransformBase)

TransformBase::TransformBase() {}

TransformBase::TransformBase(const TransformBase& source) : Inherited(source), _sfMatrix(source._sfMatrix) {}

TransformBase::~TransformBase() = default;

Transform::Transform() = default;

Transform::Transform(const Transform& source) : Inherited(source) {}

Transform::~Transform() = default;

void Transform::changed(BitVector whichField, UInt32 origin)
{
    if (whichField & MatrixFieldMask)
        invalidateVolume();
    Inherited::changed(whichField, origin);
}

namespace {
[[maybe_unused]] const bool registered = (Transform::getClassType(), true);
} // namespace

} // namespace osg
