#ifndef _OSGSWITCH_H_
#define _OSGSWITCH_H_

#include "OSGSwitchBase.h"

namespace osg {

// Core that shows one of its node's children: "choice" is the child index, or ALL / NONE.
class OSG_SYSTEMLIB_DLLMAPPING Switch : public SwitchBase
{
public:
    typedef SwitchBase Inherited;

    enum
    {
        ALL = -2,
        NONE = -1
    };

protected:
    friend class SwitchBase;

    Switch();
    Switch(const Switch& source);
    ~Switch() override;
};

} // namespace osg

#endif
