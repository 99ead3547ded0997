// Whether the running program is a packaged application.
#pragma once

namespace binding {

// Tells the core what sys.frozen says now. Needs the GIL.
void read_frozen_flag();

}  // namespace binding
