#pragma once

namespace palvera {

/// Makes the program's own fonts known. Once, after the application object was made and before the first window.
void loadFonts();

} // namespace palvera
