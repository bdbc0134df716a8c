#pragma once

#include "tavik/descriptor/records.h"
#include "tavik/export.h"

/// Descriptors of the runtime's built-in types.
namespace Tavik {

extern TAVIK_API const TypeInfo gBoolTypeInfo;
extern TAVIK_API const TypeInfo gByteTypeInfo;
extern TAVIK_API const TypeInfo gIntTypeInfo;
extern TAVIK_API const TypeInfo gLongTypeInfo;
extern TAVIK_API const TypeInfo gFloatTypeInfo;
extern TAVIK_API const TypeInfo gStringTypeInfo;
extern TAVIK_API const TypeInfo gDateTimeTypeInfo;
extern TAVIK_API const TypeInfo gBinaryTypeInfo;
extern TAVIK_API const TypeInfo gTypeNameTypeInfo;
extern TAVIK_API const TypeInfo gPropertyPathTypeInfo;
extern TAVIK_API const TypeInfo gAnyTypeInfo;

extern TAVIK_API const TypeInfo gOrlinDynamicDataTypeInfo;
extern TAVIK_API const TypeInfo gOrlinMethodFaultTypeInfo;
extern TAVIK_API const TypeInfo gOrlinRuntimeFaultTypeInfo;
extern TAVIK_API const TypeInfo gOrlinManagedObjectTypeInfo;

} // namespace Tavik

/// Descriptors of the runtime's other faults and managed types.
namespace Orlin {

extern TAVIK_API const Tavik::TypeInfo gOrlinFaultInvalidArgumentTypeInfo;
extern TAVIK_API const Tavik::TypeInfo gOrlinFaultInvalidRequestTypeInfo;
extern TAVIK_API const Tavik::TypeInfo gOrlinFaultManagedObjectNotFoundTypeInfo;
extern TAVIK_API const Tavik::TypeInfo gOrlinFaultSystemErrorTypeInfo;
extern TAVIK_API const Tavik::TypeInfo gOrlinQueryPropertyCollectorTypeInfo;

} // namespace Orlin
