#pragma once

namespace kestrune {

/// The virtual key number of the toolkit's key (`Qt::Key`); 0 for one that has none.
int VirtualKeyOf(int nQtKey);
/// The toolkit's key of a virtual key number; 0 for an unknown one. Scripts make their key events with it.
int QtKeyOf(int nVirtualKey);

} // namespace kestrune
