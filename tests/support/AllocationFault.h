// Memory that runs out on demand. The program of tests replaces the global operators (AllocationFault.cpp), which the
// library uses as well.
#ifndef ZEL_TESTS_SUPPORT_ALLOCATIONFAULT_H
#define ZEL_TESTS_SUPPORT_ALLOCATIONFAULT_H

// While one exists, its thread's allocations fail from the one after the first `spared` on.
class AllocationFault {
public:
    explicit AllocationFault(int spared);
    ~AllocationFault();
    AllocationFault(const AllocationFault&) = delete;
    AllocationFault& operator=(const AllocationFault&) = delete;

    // Whether an allocation has failed yet.
    bool struck() const;

    // Blocks that were allocated and not given back, by all threads.
    static long alive();
};

#endif
