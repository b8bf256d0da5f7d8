#ifndef _OSGDYNAMICVOLUME_H_
#define _OSGDYNAMICVOLUME_H_

#include "OSGBaseTypes.h"
#include "OSGVector.h"

namespace osg {

// Axis-aligned box volume. Nothing here computes bounding volumes (there is no render data), so
// a node's volume only holds what was set or read into it; the box is the only volume kind.
class OSG_SYSTEMLIB_DLLMAPPING DynamicVolume
{
public:
    enum Type
    {
        BOX_VOLUME = 0
    };

    DynamicVolume() = default;
    explicit DynamicVolume(Type) {}

    Type getType() const { return BOX_VOLUME; }
    void setBounds(const Pnt3f& min, const Pnt3f& max)
    {
        _min = min;
        _max = max;
        _empty = false;
    }
    void getBounds(Pnt3f& min, Pnt3f& max) const
    {
        min = _min;
        max = _max;
    }
    const Pnt3f& getMin() const { return _min; }
    const Pnt3f& getMax() const { return _max; }
    void setEmpty()
    {
        _min.setNull();
        _max.setNull();
        _empty = true;
    }
    bool isEmpty() const { return _empty; }
    void setValid(bool valid = true) { _valid = valid; }
    bool isValid() const { return _valid; }
    void invalidate() { _valid = false; }

    bool operator==(const DynamicVolume& o) const
    {
        return _empty == o._empty && _min == o._min && _max == o._max;
    }
    bool operator!=(const DynamicVolume& o) const { return !(*this == o); }

private:
    Pnt3f _min, _max;
    bool _empty = true;
    bool _valid = false;
};

} // namespace osg

#endif
