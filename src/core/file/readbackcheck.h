#pragma once

class QoSClass;
class QoSCommon;
class QoSFilter;

// What the writer refuses because the reader could not take it back as it was: a value with a
// quote, a line break or a character the code page lacks, a class below the class rows, a
// filter without its class. Each throws a QoSError that names the box (or the page
// "Allgemein") and the value; nothing is ever written changed or cut.
namespace ReadBackCheck {

void Common(const QoSCommon& common);
void Class(const QoSClass& c);
void Filter(const QoSFilter& f);

} // namespace ReadBackCheck
