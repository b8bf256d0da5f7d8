#ifndef _OSGANIMATIONCURVEBASE_H_
#define _OSGANIMATIONCURVEBASE_H_

#include "OSGAnimationControlPointFields.h"
#include "OSGAnimationCurveFields.h"
#include "OSGZeOpenSGExtDef.h"
#include <OpenSG/OSGFieldContainer.h>
#include <OpenSG/OSGNodeFields.h>
#include <OpenSG/OSGSFBaseTypes.h>
#include <OpenSG/OSGSFSysTypes.h>

namespace osg {

class AnimationCurve;

// Curve of the older animation format, bound to one component of one field: the animated node
// ("AFAppNode", or "AFAppropriateNode" as fallback), field name, global field name, attribute,
// value and component position. The node pointers are not reference counted (the curve hangs below
// the node); the control points are.
class OSG_ZEOPENSGEXT_DLLMAPPING AnimationCurveBase : public FieldContainer
{
public:
    typedef FieldContainer Inherited;
    typedef AnimationCurvePtr Ptr;

    enum
    {
        AFAppNodeFieldId = Inherited::NextFieldId,
        AFAppropriateNodeFieldId = AFAppNodeFieldId + 1,
        AFFieldNameFieldId = AFAppropriateNodeFieldId + 1,
        AFGlobalFieldNameFieldId = AFFieldNameFieldId + 1,
        AFAttributeFieldId = AFGlobalFieldNameFieldId + 1,
        AFValueFieldId = AFAttributeFieldId + 1,
        AFValuePositionFieldId = AFValueFieldId + 1,
        AFDirtyFieldId = AFValuePositionFieldId + 1,
        ControlPointsFieldId = AFDirtyFieldId + 1,
        NextFieldId = ControlPointsFieldId + 1
    };
    static constexpr BitVector AFAppNodeFieldMask = TypeTraits<BitVector>::One << AFAppNodeFieldId;
    static constexpr BitVector AFAppropriateNodeFieldMask = TypeTraits<BitVector>::One
                                                            << AFAppropriateNodeFieldId;
    static constexpr BitVector AFFieldNameFieldMask = TypeTraits<BitVector>::One << AFFieldNameFieldId;
    static constexpr BitVector AFGlobalFieldNameFieldMask = TypeTraits<BitVector>::One
                                                            << AFGlobalFieldNameFieldId;
    static constexpr BitVector AFAttributeFieldMask = TypeTraits<BitVector>::One << AFAttributeFieldId;
    static constexpr BitVector AFValueFieldMask = TypeTraits<BitVector>::One << AFValueFieldId;
    static constexpr BitVector AFValuePositionFieldMask = TypeTraits<BitVector>::One
                                                          << AFValuePositionFieldId;
    static constexpr BitVector AFDirtyFieldMask = TypeTraits<BitVector>::One << AFDirtyFieldId;
    static constexpr BitVector ControlPointsFieldMask = TypeTraits<BitVector>::One << ControlPointsFieldId;

    OSG_FC_TYPE_FUNCTIONS_DECL
    OSG_FC_CREATE_FUNCTIONS_DECL(AnimationCurvePtr)

    OSG_SFIELD_ACCESSORS(SFNodePtr, NodePtr, AFAppNode)
    OSG_SFIELD_ACCESSORS(SFNodePtr, NodePtr, AFAppropriateNode)
    OSG_SFIELD_ACCESSORS(SFString, std::string, AFFieldName)
    OSG_SFIELD_ACCESSORS(SFString, std::string, AFGlobalFieldName)
    OSG_SFIELD_ACCESSORS(SFString, std::string, AFAttribute)
    OSG_SFIELD_ACCESSORS(SFReal32, Real32, AFValue)
    OSG_SFIELD_ACCESSORS(SFUInt16, UInt16, AFValuePosition)
    OSG_SFIELD_ACCESSORS(SFBool, bool, AFDirty)
    OSG_MFIELD_REF_ACCESSORS(MFAnimationControlPointPtr, AnimationControlPointPtr, ControlPoints)

protected:
    AnimationCurveBase();
    AnimationCurveBase(const AnimationCurveBase& source);
    ~AnimationCurveBase() override; // releases the referenced containers
};

} // namespace osg

#endif
