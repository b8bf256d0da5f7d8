#ifndef _OSGBASEFUNCTIONS_H_
#define _OSGBASEFUNCTIONS_H_

#include "OSGBaseTypes.h"

#include <cmath>

namespace osg {

template <class T>
inline T osgdegree2rad(const T deg)
{
    return T(deg * Pi / 180.0);
}
template <class T>
inline T osgrad2degree(const T rad)
{
    return T(rad * 180.0 / Pi);
}
template <class T>
inline T deg2rad(const T deg)
{
    return osgdegree2rad(deg);
}
template <class T>
inline T rad2deg(const T rad)
{
    return osgrad2degree(rad);
}
template <class T>
inline T osgabs(const T v)
{
    return v < T(0) ? -v : v;
}
template <class T>
inline T osgMin(const T a, const T b)
{
    return a < b ? a : b;
}
template <class T>
inline T osgMax(const T a, const T b)
{
    return a > b ? a : b;
}
template <class T>
inline T osgsqrt(const T v)
{
    return std::sqrt(v);
}
template <class T>
inline T osgsin(const T v)
{
    return std::sin(v);
}
template <class T>
inline T osgcos(const T v)
{
    return std::cos(v);
}
template <class T>
inline T osgtan(const T v)
{
    return std::tan(v);
}
template <class T>
inline T osgacos(const T v)
{
    return std::acos(v < T(-1) ? T(-1) : (v > T(1) ? T(1) : v));
}
template <class T>
inline T osgasin(const T v)
{
    return std::asin(v < T(-1) ? T(-1) : (v > T(1) ? T(1) : v));
}
template <class T>
inline T osgatan2(const T y, const T x)
{
    return std::atan2(y, x);
}

enum SystemState
{
    Startup = 1,
    Running = 2,
    Shutdown = 3
};

// Startup is the state before osgInit, Running after it, Shutdown after osgExit.
OSG_SYSTEMLIB_DLLMAPPING extern SystemState GlobalSystemState;

// Types register themselves when the library is loaded, so osgInit has little left to do: it
// marks the system as running. The version arguments are checked against the headers the caller
// was compiled with; a mismatch makes it return false. debug, dll and mt are accepted and ignored.
OSG_SYSTEMLIB_DLLMAPPING bool osgInit(Int32 argc, Char8** argv, UInt16 major = OSG_MAJOR_VERSION,
                                      UInt16 minor = OSG_MINOR_VERSION, UInt16 release = OSG_RELEASE_VERSION,
                                      bool debug = false, bool dll = true, bool mt = false);

// Marks the system as shut down. Containers still alive are left as they are: releasing them is
// the owner's business, as in any OpenSG program.
OSG_SYSTEMLIB_DLLMAPPING bool osgExit(void);

} // namespace osg

#endif
