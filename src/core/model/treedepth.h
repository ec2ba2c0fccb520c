#pragma once

class QoSClass;

// How deep the class tree goes: a main class and at most three levels of sub classes below it,
// counted by the links between the classes (the rows on the page follow them but are not asked).
namespace TreeDepth {

constexpr int ClassLevels = 4;

// 0 for a main class, 1 for its sub classes, and so on.
int Level(const QoSClass& c);
// How many class levels hang below the class (0 without sub classes), leaving out the branch
// of `without` when it lies below.
int LevelsBelow(const QoSClass& c, const QoSClass* without = nullptr);
// Whether hanging `moved` with everything below it under `target` keeps the tree within the
// four levels. A target below the moved class is first cut loose and becomes a main class, as a
// drop on a descendant does.
bool FitsUnder(const QoSClass& moved, const QoSClass& target);

} // namespace TreeDepth
