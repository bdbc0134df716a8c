#pragma once

#include "tavik/export.h"

/// Export of class templates and of their explicit instantiations.
///
/// `TAVIK_TEMPLATE_API` marks a template: on ELF it must be visible, so that all libraries agree on the
/// identity of its classes. `TAVIK_INSTANTIATION_API(MACRO)` marks the declaration of an instantiation that a
/// library holds, with that library's export macro: an instantiation over hidden classes is hidden without
/// it, and on Windows every one.
#if defined(_WIN32)
#define TAVIK_TEMPLATE_API
#else
#define TAVIK_TEMPLATE_API __attribute__((visibility("default")))
#endif
#define TAVIK_INSTANTIATION_API(MACRO) MACRO
