#ifndef ZEL_COMMON_TRACER_LASTINGNAMES_H
#define ZEL_COMMON_TRACER_LASTINGNAMES_H

namespace ZEL::RT {

// The names that outlive the libraries they came from: one copy of each text, kept for good. Not locked.
class LastingNames {
public:
    // The copy of a name that lies in a loaded object; any other as it is. Null when there is no memory for the copy.
    static const char* of(const char* name);

    // Starts anew in the child of a fork that caught another thread in here.
    static void renew();
};

} // namespace ZEL::RT

#endif
