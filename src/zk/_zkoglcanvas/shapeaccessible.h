#pragma once

class QObject;

namespace zk {

/// From now on assistive technology finds the shapes of each `TZKOglControl`. Further calls do nothing. For the unit's
/// own sources, as is what follows.
void InstallShapeAccessibility();

/// Tells assistive technology that a shape has the focus; nothing for null.
void TellFocusOfShape(QObject* shape);

}  // namespace zk
