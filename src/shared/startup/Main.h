#pragma once

namespace mdMain {

/// The start-up procedure: finds the store, chooses the editor and shows it. From then on the
/// program handles the events of the screen. Raises what the editor's load raises.
void Main();

}  // namespace mdMain
