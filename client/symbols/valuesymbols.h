#ifndef ZANT_CLIENT_SYMBOLS_VALUESYMBOLS_H
#define ZANT_CLIENT_SYMBOLS_VALUESYMBOLS_H

#include "client/symbols/symbol.h"
#include "client/values/axes.h"
#include "client/values/coordsys.h"
#include "client/values/varlen.h"
#include "client/values/vector.h"

namespace Zant {

/// The symbols of plain values.
///
/// registerSymbol() sends the command that defines the object, then links it. directSet() writes the value past the
/// command language and passes the engine's answer on (0 without an instance). directGet() reads it; when the object
/// holds a value of another kind it reports error 2 to the buffer, sets the failure value and returns false.
///
/// Threads: as the command buffer of each, one at a time.

/// A number, command "var". Failure value: 0.
class DoubleSymbol : public Symbol {
public:
    using Symbol::Symbol;
    void registerSymbol();
    int directSet(const Double& number) const;
    bool directGet(Double& number) const;
};

/// A text, command "string". Text that is read belongs to the engine. Failure value: null.
class StringSymbol : public Symbol {
public:
    using Symbol::Symbol;
    void registerSymbol();
    int directSet(const String& text) const;
    bool directGet(String& text) const;

    /// @return the text as directGet() reads it, or null; the buffer is not used
    const char* toString(DynamicBuffer& unused) const;
};

/// A vector, command "vector". Failure value: count 0.
class VectorSymbol : public Symbol {
public:
    using Symbol::Symbol;
    void registerSymbol();
    int directSet(const Vector& vector) const;
    bool directGet(Vector& vector) const;
};

/// An orientation, command "axes". Failure value: rows -1.
class AxesSymbol : public Symbol {
public:
    using Symbol::Symbol;
    void registerSymbol();
    int directSet(const Axes& axes) const;
    bool directGet(Axes& axes) const;
};

/// A coordinate system. It has no command of its own: registering it only links it, as any object.
/// Failure value: rows -1 in its axes.
class CoordSysSymbol : public Symbol {
public:
    using Symbol::Symbol;
    int directSet(const CoordSys& coordSys) const;
    bool directGet(CoordSys& coordSys) const;
};

}  // namespace Zant

#endif
