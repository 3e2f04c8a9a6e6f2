#pragma once

namespace mdMain {

/// The start-up procedure: determines the store's folder from the settings, then loads and shows
/// the editor that the POS configuration selects. Raises what the editor's load raises.
void Main();

}  // namespace mdMain
