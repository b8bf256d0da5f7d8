#ifndef _OSGTYPEDFUNCTORS_H_
#define _OSGTYPEDFUNCTORS_H_

#include "OSGBaseTypes.h"

#include <functional>

namespace osg {

// Call-argument policies: how a functor passes its argument on to the callee.
template <class ArgT>
struct CPtrRefCallArg
{
    typedef ArgT ArgType;
    typedef ArgT& CallType;
};
template <class ArgT>
struct CPtrCallArg
{
    typedef ArgT ArgType;
    typedef ArgT CallType;
};
template <class ArgT>
struct PtrCallArg
{
    typedef ArgT ArgType;
    typedef ArgT* CallType;
};
template <class ArgT>
struct RefCallArg
{
    typedef ArgT ArgType;
    typedef ArgT& CallType;
};
template <class ArgT>
struct ArgsCollector
{
    typedef ArgT ArgType;
    typedef ArgT CallType;
};

// Functors are passed by value. All state lives in the base class, so the function and method
// functors returned by the factories below slice into their base without loss. An empty functor
// returns RetT().
template <class RetT, class Arg1T>
class TypedFunctor1Base
{
public:
    typedef typename Arg1T::CallType Arg1Call;
    typedef std::function<RetT(Arg1Call)> Callable;

    TypedFunctor1Base() = default;
    explicit TypedFunctor1Base(Callable callable) : _callable(std::move(callable)) {}

    RetT call(Arg1Call arg1) { return _callable ? _callable(arg1) : RetT(); }
    RetT operator()(Arg1Call arg1) { return call(arg1); }

protected:
    Callable _callable;
};

template <class RetT, class Arg1T, class Arg2T>
class TypedFunctor2Base
{
public:
    typedef typename Arg1T::CallType Arg1Call;
    typedef typename Arg2T::CallType Arg2Call;
    typedef std::function<RetT(Arg1Call, Arg2Call)> Callable;

    TypedFunctor2Base() = default;
    explicit TypedFunctor2Base(Callable callable) : _callable(std::move(callable)) {}

    RetT call(Arg1Call arg1, Arg2Call arg2) { return _callable ? _callable(arg1, arg2) : RetT(); }
    RetT operator()(Arg1Call arg1, Arg2Call arg2) { return call(arg1, arg2); }

protected:
    Callable _callable;
};

template <class RetT, class Arg1T>
class TypedFunctionFunctor1 : public TypedFunctor1Base<RetT, Arg1T>
{
public:
    typedef TypedFunctor1Base<RetT, Arg1T> Inherited;
    using Inherited::Inherited;
};

template <class RetT, class Arg1T>
class TypedStoredObjectFunctor1 : public TypedFunctor1Base<RetT, Arg1T>
{
public:
    typedef TypedFunctor1Base<RetT, Arg1T> Inherited;
    using Inherited::Inherited;
};

template <class RetT, class Arg1T, class Arg2T>
class TypedFunctionFunctor2 : public TypedFunctor2Base<RetT, Arg1T, Arg2T>
{
public:
    typedef TypedFunctor2Base<RetT, Arg1T, Arg2T> Inherited;
    using Inherited::Inherited;
};

template <class RetT, class Arg1T, class Arg2T>
class TypedStoredObjectFunctor2 : public TypedFunctor2Base<RetT, Arg1T, Arg2T>
{
public:
    typedef TypedFunctor2Base<RetT, Arg1T, Arg2T> Inherited;
    using Inherited::Inherited;
};

// f(Arg1T&). The const-reference overloads are an addition: they accept callees written as
// f(const NodePtr&) and still produce the same functor type.
template <class RetT, class Arg1T>
TypedFunctionFunctor1<RetT, CPtrRefCallArg<Arg1T>> osgTypedFunctionFunctor1CPtrRef(RetT (*func)(Arg1T&))
{
    return TypedFunctionFunctor1<RetT, CPtrRefCallArg<Arg1T>>(func);
}
template <class RetT, class Arg1T>
TypedFunctionFunctor1<RetT, CPtrRefCallArg<Arg1T>> osgTypedFunctionFunctor1CPtrRef(RetT (*func)(const Arg1T&))
{
    return TypedFunctionFunctor1<RetT, CPtrRefCallArg<Arg1T>>(func);
}
template <class RetT, class Arg1T>
TypedFunctionFunctor1<RetT, CPtrCallArg<Arg1T>> osgTypedFunctionFunctor1CPtr(RetT (*func)(Arg1T))
{
    return TypedFunctionFunctor1<RetT, CPtrCallArg<Arg1T>>(func);
}
template <class RetT, class Arg1T>
TypedFunctionFunctor1<RetT, PtrCallArg<Arg1T>> osgTypedFunctionFunctor1Ptr(RetT (*func)(Arg1T*))
{
    return TypedFunctionFunctor1<RetT, PtrCallArg<Arg1T>>(func);
}
template <class RetT, class Arg1T>
TypedFunctionFunctor1<RetT, RefCallArg<Arg1T>> osgTypedFunctionFunctor1Ref(RetT (*func)(Arg1T&))
{
    return TypedFunctionFunctor1<RetT, RefCallArg<Arg1T>>(func);
}
template <class Arg1T>
TypedFunctionFunctor1<void, CPtrRefCallArg<Arg1T>> osgTypedFunctionVoidFunctor1CPtrRef(void (*func)(Arg1T&))
{
    return TypedFunctionFunctor1<void, CPtrRefCallArg<Arg1T>>(func);
}

// obj->method(Arg1T&); obj must outlive the functor.
template <class RetT, class ObjT, class Arg1T>
TypedStoredObjectFunctor1<RetT, CPtrRefCallArg<Arg1T>>
osgTypedMethodFunctor1ObjPtrCPtrRef(ObjT* obj, RetT (ObjT::*method)(Arg1T&))
{
    return TypedStoredObjectFunctor1<RetT, CPtrRefCallArg<Arg1T>>(
        [obj, method](Arg1T& arg1) -> RetT { return (obj->*method)(arg1); });
}
template <class RetT, class ObjT, class Arg1T>
TypedStoredObjectFunctor1<RetT, CPtrRefCallArg<Arg1T>>
osgTypedMethodFunctor1ObjPtrCPtrRef(ObjT* obj, RetT (ObjT::*method)(const Arg1T&))
{
    return TypedStoredObjectFunctor1<RetT, CPtrRefCallArg<Arg1T>>(
        [obj, method](Arg1T& arg1) -> RetT { return (obj->*method)(arg1); });
}

// f(ObjectT&, Arg2T): the leave functor of traverse.
template <class RetT, class ObjectT, class Arg2T>
TypedFunctionFunctor2<RetT, CPtrRefCallArg<ObjectT>, ArgsCollector<Arg2T>>
osgTypedFunctionFunctor2CPtrRef(RetT (*func)(ObjectT&, Arg2T))
{
    return TypedFunctionFunctor2<RetT, CPtrRefCallArg<ObjectT>, ArgsCollector<Arg2T>>(func);
}
template <class RetT, class ObjectT, class Arg2T>
TypedFunctionFunctor2<RetT, CPtrRefCallArg<ObjectT>, ArgsCollector<Arg2T>>
osgTypedFunctionFunctor2CPtrRef(RetT (*func)(const ObjectT&, Arg2T))
{
    return TypedFunctionFunctor2<RetT, CPtrRefCallArg<ObjectT>, ArgsCollector<Arg2T>>(func);
}

template <class RetT, class ObjT, class Arg1T, class Arg2T>
TypedStoredObjectFunctor2<RetT, CPtrRefCallArg<Arg1T>, ArgsCollector<Arg2T>>
osgTypedMethodFunctor2ObjPtrCPtrRef(ObjT* obj, RetT (ObjT::*method)(Arg1T&, Arg2T))
{
    return TypedStoredObjectFunctor2<RetT, CPtrRefCallArg<Arg1T>, ArgsCollector<Arg2T>>(
        [obj, method](Arg1T& arg1, Arg2T arg2) -> RetT { return (obj->*method)(arg1, arg2); });
}
template <class RetT, class ObjT, class Arg1T, class Arg2T>
TypedStoredObjectFunctor2<RetT, CPtrRefCallArg<Arg1T>, ArgsCollector<Arg2T>>
osgTypedMethodFunctor2ObjPtrCPtrRef(ObjT* obj, RetT (ObjT::*method)(const Arg1T&, Arg2T))
{
    return TypedStoredObjectFunctor2<RetT, CPtrRefCallArg<Arg1T>, ArgsCollector<Arg2T>>(
        [obj, method](Arg1T& arg1, Arg2T arg2) -> RetT { return (obj->*method)(arg1, arg2); });
}

} // namespace osg

#endif
