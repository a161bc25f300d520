/// @file
/// Every class of the library, room by room.

/// @namespace ZEL
/// The roots of the class tree, locks, tracers and dates, and the functions that make objects.

/// @namespace ZEL::RT
/// The runtime: smart pointers, threads, properties, files and libraries, and the classes of static operations.

/// @namespace ZEL::DATA
/// Binary values.

/// @namespace ZEL::I
/// The interface of the properties store.

/// @namespace ZEL::EXCEPTIONS
/// The exceptions, their properties, and the way to throw them.

#ifndef ZEL_ZEL_H
#define ZEL_ZEL_H

// exceptions
#include "zel/exceptions/AccessDeniedException.h"
#include "zel/exceptions/BadAllocException.h"
#include "zel/exceptions/ClassCastException.h"
#include "zel/exceptions/Cloneable.h"
#include "zel/exceptions/ComparisonFailedException.h"
#include "zel/exceptions/IExceptionData.h"
#include "zel/exceptions/ILocalizable.h"
#include "zel/exceptions/IOException.h"
#include "zel/exceptions/InstantiationException.h"
#include "zel/exceptions/InvalidArgumentException.h"
#include "zel/exceptions/InvalidHandleException.h"
#include "zel/exceptions/LocalText.h"
#include "zel/exceptions/LockException.h"
#include "zel/exceptions/LogicException.h"
#include "zel/exceptions/Marshallable.h"
#include "zel/exceptions/Mixinable.h"
#include "zel/exceptions/NoSuchMethodException.h"
#include "zel/exceptions/NullPointerException.h"
#include "zel/exceptions/Object.h"
#include "zel/exceptions/ObjectAlreadyExistsException.h"
#include "zel/exceptions/ObjectException.h"
#include "zel/exceptions/ObjectNotFoundException.h"
#include "zel/exceptions/OperationAbortedException.h"
#include "zel/exceptions/OperationException.h"
#include "zel/exceptions/OperationFailedException.h"
#include "zel/exceptions/OperationNotSupportedException.h"
#include "zel/exceptions/PassPhrasePolicyException.h"
#include "zel/exceptions/PolicyException.h"
#include "zel/exceptions/RuntimeException.h"
#include "zel/exceptions/SerializationException.h"
#include "zel/exceptions/SystemException.h"
#include "zel/exceptions/UnexpectedException.h"
#include "zel/exceptions/XmlException.h"
#include "zel/exceptions/ZelException.h"
#include "zel/exceptions/throwException.h"

// memory
#include "zel/memory/SmartPointer.h"

// threads
#include "zel/threads/AtomicInt.h"
#include "zel/threads/Guarded.h"
#include "zel/threads/Mutex.h"
#include "zel/threads/MutexGrabber.h"
#include "zel/threads/Semaphore.h"
#include "zel/threads/Thread.h"

// data
#include "zel/data/ByteArrayImpl.h"
#include "zel/data/Date.h"
#include "zel/data/IByteArray.h"

// tracer
#include "zel/tracer/Queue.h"
#include "zel/tracer/Trace.h"
#include "zel/tracer/TraceRecord.h"
#include "zel/tracer/TraceWriter.h"
#include "zel/tracer/Tracer.h"

// utils
#include "zel/utils/EnvUtils.h"
#include "zel/utils/IProperties.h"
#include "zel/utils/PropertiesImpl.h"
#include "zel/utils/StringUtils.h"
#include "zel/utils/UrnUtils.h"
#include "zel/utils/Vector.h"
#include "zel/utils/XmlUtils.h"

// persistence
#include "zel/persistence/FileLockImpl.h"
#include "zel/persistence/ILocalFile.h"
#include "zel/persistence/LocalFileImpl.h"

// library
#include "zel/library/DllManager.h"
#include "zel/library/DynamicLibraryImpl.h"
#include "zel/library/DynamicMethod.h"
#include "zel/library/FileUtils.h"
#include "zel/library/FunctionTableImpl.h"
#include "zel/library/Library.h"

#endif
