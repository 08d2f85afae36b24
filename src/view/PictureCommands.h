#pragma once

namespace kestrune {

class CPaintView;

/// Registers the commands of the Image and Color Mode menus, Clear, and the clipboard's commands that need a picture.
void RegisterPictureCommands(CPaintView& view);

} // namespace kestrune
