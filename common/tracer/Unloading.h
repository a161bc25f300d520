#ifndef ZEL_COMMON_TRACER_UNLOADING_H
#define ZEL_COMMON_TRACER_UNLOADING_H

namespace ZEL::RT {

// Held while a library is unloaded: the records in the ring borrow their names, and must stay printable when the
// library that these belong to is gone. Those that are there get copies of their names at the beginning, and so do
// those that are made until the end, as finalisers trace too. Never fails; a name without memory for it is left out.
class Unloading {
public:
    Unloading();
    ~Unloading();
    Unloading(const Unloading&) = delete;
    Unloading& operator=(const Unloading&) = delete;
};

} // namespace ZEL::RT

#endif
