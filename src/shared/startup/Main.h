#pragma once

namespace mdMain {

/// The start-up procedure: finds the store, chooses the editor and shows it. The program then lives
/// on in the events of the screen. A failure of the editor's load comes out of here.
void Main();

}  // namespace mdMain
