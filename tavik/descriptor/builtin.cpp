#include "tavik/descriptor/builtin.h"

#include "tavik/descriptor/layout.h" // asserts the layout of the records

namespace Tavik {

#define TAVIK_ORLIN_VERSION "orlin.version.version0"

constinit const TypeInfo gBoolTypeInfo = {TypeKind::Boolean, "boolean", "boolean", TAVIK_ORLIN_VERSION};
constinit const TypeInfo gByteTypeInfo = {TypeKind::Byte, "byte", "byte", TAVIK_ORLIN_VERSION};
constinit const TypeInfo gIntTypeInfo = {TypeKind::Int, "int", "int", TAVIK_ORLIN_VERSION};
constinit const TypeInfo gLongTypeInfo = {TypeKind::Long, "long", "long", TAVIK_ORLIN_VERSION};
constinit const TypeInfo gFloatTypeInfo = {TypeKind::Float, "float", "float", TAVIK_ORLIN_VERSION};
constinit const TypeInfo gStringTypeInfo = {TypeKind::String, "string", "string", TAVIK_ORLIN_VERSION};
constinit const TypeInfo gDateTimeTypeInfo = {
    TypeKind::DateTime, "dateTime", "dateTime", TAVIK_ORLIN_VERSION};
constinit const TypeInfo gBinaryTypeInfo = {TypeKind::Binary, "binary", "binary", TAVIK_ORLIN_VERSION};
constinit const TypeInfo gTypeNameTypeInfo = {
    TypeKind::TypeName, "typeName", "typeName", TAVIK_ORLIN_VERSION};
constinit const TypeInfo gPropertyPathTypeInfo = {
    TypeKind::PropertyPath, "propertyPath", "propertyPath", TAVIK_ORLIN_VERSION};
constinit const TypeInfo gAnyTypeInfo = {TypeKind::Any, "anyType", "anyType", TAVIK_ORLIN_VERSION};

constinit const TypeInfo gOrlinDynamicDataTypeInfo = {
    TypeKind::Data, "orlin.DynamicData", "DynamicData", TAVIK_ORLIN_VERSION};
constinit const TypeInfo gOrlinMethodFaultTypeInfo = {
    TypeKind::Fault, "orlin.MethodFault", "MethodFault", TAVIK_ORLIN_VERSION};
constinit const TypeInfo gOrlinRuntimeFaultTypeInfo = {
    TypeKind::Fault, "orlin.RuntimeFault", "RuntimeFault", TAVIK_ORLIN_VERSION};
constinit const TypeInfo gOrlinManagedObjectTypeInfo = {
    TypeKind::Managed, "orlin.ManagedObject", "ManagedObject", TAVIK_ORLIN_VERSION};

} // namespace Tavik

namespace Orlin {

constinit const Tavik::TypeInfo gOrlinFaultInvalidArgumentTypeInfo = {
    Tavik::TypeKind::Fault, "orlin.fault.InvalidArgument", "InvalidArgument", TAVIK_ORLIN_VERSION};
constinit const Tavik::TypeInfo gOrlinFaultInvalidRequestTypeInfo = {
    Tavik::TypeKind::Fault, "orlin.fault.InvalidRequest", "InvalidRequest", TAVIK_ORLIN_VERSION};
constinit const Tavik::TypeInfo gOrlinFaultManagedObjectNotFoundTypeInfo = {
    Tavik::TypeKind::Fault, "orlin.fault.ManagedObjectNotFound", "ManagedObjectNotFound",
    TAVIK_ORLIN_VERSION};
constinit const Tavik::TypeInfo gOrlinFaultSystemErrorTypeInfo = {
    Tavik::TypeKind::Fault, "orlin.fault.SystemError", "SystemError", TAVIK_ORLIN_VERSION};
constinit const Tavik::TypeInfo gOrlinQueryPropertyCollectorTypeInfo = {
    Tavik::TypeKind::Managed, "orlin.query.PropertyCollector", "PropertyCollector",
    "orlin.query.version.version1"};

} // namespace Orlin

#undef TAVIK_ORLIN_VERSION
