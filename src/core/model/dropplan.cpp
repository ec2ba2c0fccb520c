#include "model/dropplan.h"

#include "base/numbers.h"
#include "model/objectpage.h"
#include "model/qosclass.h"
#include "model/treedepth.h"

namespace {

using Outcome = DropPlan::Outcome;

// The drop as it would go if nothing refused it.
struct Drop
{
    const DropPlan& plan;
    const QoSObject& dragged;
    const QoSClass* draggedClass; // null for a filter
    const QoSClass* foundClass;   // the box in the cell, if it is a class
};

struct Refusal
{
    bool (*refuses)(const Drop& drop);
    const char16_t* message; // empty: the box goes back without a word
};

bool fits16(int n)
{
    return n >= -32768 && n <= 32767;
}

// In this order; the first one that refuses decides.
constexpr Refusal Refusals[] = {
    // Classes stand in the rows of the four class levels; a file with a class below them
    // could not be read back.
    {[](const Drop& d) {
         return d.plan.outcome == Outcome::Move && d.draggedClass && d.plan.y >= TreeDepth::ClassLevels;
     },
     u"Verschieben nicht möglich. Keine weitere Ebene möglich."},
    // A box's column and row are 16-bit.
    {[](const Drop& d) { return d.plan.outcome == Outcome::Move && !(fits16(d.plan.x) && fits16(d.plan.y)); },
     u""},
    {[](const Drop& d) { return d.plan.outcome == Outcome::Link && !d.draggedClass && !d.foundClass; },
     u"Anhängen nicht möglich! TODO"},
    {[](const Drop& d) {
         return d.plan.outcome == Outcome::Link && !d.draggedClass && d.foundClass &&
                d.foundClass->HasChildClasses();
     },
     u"Anhängen nicht möglich! Klasse hat Unterklassen."},
    // A class dropped on a filter simply goes back.
    {[](const Drop& d) { return d.plan.outcome == Outcome::Link && d.draggedClass && !d.foundClass; }, u""},
    {[](const Drop& d) {
         return d.plan.outcome == Outcome::Link && d.draggedClass && d.foundClass &&
                d.foundClass->HasFilters();
     },
     u"Anhängen nicht möglich. Klasse hat untergeordnete Filter."},
    // No drop makes the tree deeper than four class levels, counted from the main class of
    // the moved branch.
    {[](const Drop& d) {
         return d.plan.outcome == Outcome::Link && d.draggedClass && d.foundClass &&
                !TreeDepth::FitsUnder(*d.draggedClass, *d.foundClass);
     },
     u"Anhängen nicht möglich. Keine weitere Ebene möglich."},
};

// Whether `ancestor` is `c` itself or stands above it. Walks up the parents, which is as
// deep as the tree and not as wide as the subtree; a broken document must not hang it.
bool isAtOrAbove(const QoSClass* ancestor, const QoSClass* c)
{
    for (int depth = 0; c && depth < 10000; ++depth, c = c->ParentQoSObject())
        if (c == ancestor)
            return true;
    return false;
}

} // namespace

DropPlan DropPlan::For(const QoSObject& dragged, double left, double top)
{
    DropPlan plan;
    ObjectPage* page = dragged.GetObjectPage();
    if (!page)
        return plan;
    const ObjectPageProperties& p = page->prop();
    const auto l = Numbers::TryRoundToInt32(left);
    const auto t = Numbers::TryRoundToInt32(top);
    if (!l || !t || p.ColWidth <= 0 || p.RowHeight <= 0)
        return plan;
    plan.hasCell = true;
    plan.x = *l / p.ColWidth;
    plan.y = *t / p.RowHeight;
    plan.found = page->ObjectAt(plan.x, plan.y);

    const auto* draggedClass = qobject_cast<const QoSClass*>(&dragged);
    auto* foundClass = qobject_cast<QoSClass*>(plan.found.data());
    if (!plan.found) {
        plan.outcome = Outcome::Move;
    } else if (plan.found == &dragged) {
        plan.outcome = Outcome::Stay;
    } else {
        plan.outcome = Outcome::Link;
        plan.parent = foundClass;
        // Dropping a class on one of its own descendants swaps the two: the descendant is
        // cut loose first, then takes the class below it.
        plan.swap = draggedClass && foundClass && isAtOrAbove(draggedClass, foundClass->ParentQoSObject());
        // Dropped on the class it already hangs under: nothing to cut, nothing to refuse, even
        // where a file left that class with a rule broken.
        plan.alreadyLinked = foundClass && dragged.ParentQoSObject() == foundClass && dragged.LineTop();
        if (plan.alreadyLinked)
            return plan;
    }

    const Drop drop{plan, dragged, draggedClass, foundClass};
    for (const Refusal& refusal : Refusals) {
        if (refusal.refuses(drop)) {
            plan.outcome = Outcome::Refused;
            plan.message = QString::fromUtf16(refusal.message);
            plan.parent = nullptr;
            plan.swap = false;
            break;
        }
    }
    return plan;
}
