#pragma once

namespace tovrin::ViewAccessibility {

// Teaches Qt's accessibility how our own widgets read: a session row as one list item that raises
// its session when pressed, a section as a list named by its heading, the chip's header as the
// button that unfolds it, a switch as a check box that clicks, the drawn text lines as static text,
// and any plain top-level widget as a window. Views whose widgets it describes call it before they
// are first asked about; later calls do nothing.
void install();

} // namespace tovrin::ViewAccessibility
