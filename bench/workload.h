#pragma once

#include "pellum/object/ref.h"
#include "tavik/value/any.h"

#include <cstddef>
#include <string>
#include <vector>

namespace Bench {

/// A message that everything is measured with.
struct Workload {
    std::string name;
    std::string text; ///< compact JSON of the value
    Pellum::Ref<Tavik::Any> value;
    Pellum::Ref<Tavik::Any> same;        ///< a copy
    Pellum::Ref<Tavik::Any> lastDiffers; ///< a copy whose last property, in the order of the text, differs
};

/// Messages of `examples/`. They live until the process ends.
const std::vector<Workload>& GetWorkloads();

/// The one of that name, which must be one of them.
const Workload& GetWorkload(const std::string& name);

/// An array of that many events. It lives until the process ends.
const Workload& MakeEvents(std::size_t count);

} // namespace Bench
