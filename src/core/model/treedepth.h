#pragma once

class QoSClass;

// How deep the class tree goes: a main class and at most three levels of sub classes below it,
// counted by the links between the classes (QoSClass::Level, QoSClass::SubtreeDepth); the rows on
// the page follow them but are not asked.
namespace TreeDepth {

constexpr int ClassLevels = 4;

// Whether hanging `moved` with everything below it under `target` keeps the tree within the
// four levels. A target below the moved class is first cut loose and becomes a main class, as a
// drop on a descendant does.
bool FitsUnder(const QoSClass& moved, const QoSClass& target);

} // namespace TreeDepth
