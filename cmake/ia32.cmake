# 32-bit x86, built by the machine's own compiler with its 32-bit libraries.
set(CMAKE_C_FLAGS_INIT -m32)
set(CMAKE_CXX_FLAGS_INIT -m32)
