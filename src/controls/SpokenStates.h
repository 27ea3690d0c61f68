#pragma once

namespace palvera {

/// Has assistants told of what Qt 6.4's Accessible has no word for: of an item with a property `modal` or `expanded`,
/// whether it is. Once, before the first window.
void installSpokenStates();

} // namespace palvera
