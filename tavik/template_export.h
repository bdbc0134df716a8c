#pragma once

#include "tavik/export.h"

/// Export of class templates and of their explicit instantiations.
///
/// `TAVIK_TEMPLATE_API` marks a template: on ELF it must be visible, so that all libraries agree on the
/// identity of its classes. `TAVIK_INSTANTIATION_API(MACRO)` marks the declaration of an instantiation that a
/// library holds, with that library's export macro: an instantiation over hidden classes is hidden without
/// it, and on Windows every one.
///
/// What a Windows library exports of an instantiation is its table of virtual functions and its type
/// information. Members are never exported, and who is told that a library holds them compiles none:
/// `TAVIK_TEMPLATE_MEMBER` marks those that users may name, which compiles them into the caller.
///
/// `TAVIK_DECLARE_INSTANTIATION(MACRO, Class)` and `TAVIK_DEFINE_INSTANTIATION(Class)` give an instantiation
/// over a generated type to that type's library. On ELF names alone make it one class in all libraries:
/// nothing is done there, where the definition would compile every member.
#if defined(_WIN32)
#define TAVIK_TEMPLATE_API
#define TAVIK_TEMPLATE_MEMBER [[gnu::always_inline]]
#define TAVIK_DECLARE_INSTANTIATION(MACRO, ...) extern template class MACRO __VA_ARGS__;
#define TAVIK_DEFINE_INSTANTIATION(...) template class __VA_ARGS__;
#else
#define TAVIK_TEMPLATE_API __attribute__((visibility("default")))
#define TAVIK_TEMPLATE_MEMBER
#define TAVIK_DECLARE_INSTANTIATION(MACRO, ...)
#define TAVIK_DEFINE_INSTANTIATION(...)
#endif
#define TAVIK_INSTANTIATION_API(MACRO) MACRO
