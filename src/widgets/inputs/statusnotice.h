#pragma once

class QString;
class QWidget;
class StatusLine;

// A field's notice in the status line, or in the status bar of the main window the field is in
// when it was given no status line.
void ShowNotice(StatusLine* line, QWidget* field, const QString& text);
// Takes the notice back, but only while the line still shows it.
void ClearNotice(StatusLine* line, QWidget* field, const QString& text);
