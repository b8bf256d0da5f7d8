#ifndef _OSGTRANSFORM3D_H_
#define _OSGTRANSFORM3D_H_

#include "OSGTransform3DBase.h"

namespace osg {

// Transform core of the host. matrix = T(translation) * R * S(scale), where R comes from the
// rotation angles (degrees) of the TransformAttachment on the first node using this core: rotate
// about x first, then y, then z, all about the fixed axes (R = Rz * Ry * Rx). Ending an edit of
// translation or scale rebuilds the matrix.
class OSG_ZEOPENSGEXT_DLLMAPPING Transform3D : public Transform3DBase
{
public:
    typedef Transform3DBase Inherited;

    // The rotation for angles in degrees about x, y and z, applied in that order.
    static Quaternion rotationFromAngles(const Vec3f& anglesDeg);
    // Rebuilds the matrix with the given angles.
    void updateMatrix(const Vec3f& rotationAnglesDeg);
    // Rebuilds the matrix with the angles of the first parent node (no attachment: no rotation).
    void updateMatrix();
    void changed(BitVector whichField, UInt32 origin) override;

protected:
    friend class Transform3DBase;

    Transform3D();
    Transform3D(const Transform3D& source);
    ~Transform3D() override;
};

} // namespace osg

#endif
