#pragma once

namespace Bench {

/// Registers what is done to whole messages, the larger ones of `examples/`, beside the same done to a tree
/// of JSON.
void RegisterDocuments();

} // namespace Bench
