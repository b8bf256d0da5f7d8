#ifndef _OSGTYPEDFUNCTORS_H_
#define _OSGTYPEDFUNCTORS_H_

#include "OSGBaseTypes.h"

#include <functional>

namespace osg {

// Call-argument policy: the functor passes its argument on to the callee by reference.
template <class ArgT>
struct CPtrRefCallArg
{
    typedef ArgT ArgType;
    typedef ArgT& CallType;
};
// Functors are passed by value. All state lives in the base class, so the function functors
// returned by the factories below slice into their base without loss. An empty functor returns
// RetT().
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

template <class RetT, class Arg1T>
class TypedFunctionFunctor1 : public TypedFunctor1Base<RetT, Arg1T>
{
public:
    typedef TypedFunctor1Base<RetT, Arg1T> Inherited;
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
} // namespace osg

#endif
