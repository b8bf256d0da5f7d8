#ifndef ZE_TESTS_LIVECONTAINERS_H
#define ZE_TESTS_LIVECONTAINERS_H

#include <OpenSG/OSGFieldContainerFactory.h>

// Number of containers the factory currently knows alive; tests compare it before and after a
// scene's life to see that everything built was released again.
inline unsigned liveContainers()
{
    unsigned n = 0;
    for (const osg::FieldContainerPtr& fc : *osg::FieldContainerFactory::the()->getFieldContainerStore())
        if (fc != osg::NullFC)
            ++n;
    return n;
}

#endif
