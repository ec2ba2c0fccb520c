#pragma once

class ObjectPage;

// The page's "Seitengröße..." command: asks for "columns, rows" until the answer has two
// parts. Blanks anywhere are ignored; a part that is no number or lies beyond 32 bits keeps
// that dimension as it is. An empty answer cancels.
namespace PageSizeQuestion {

// Returns false when the user cancelled.
bool Ask(ObjectPage& page);

} // namespace PageSizeQuestion
