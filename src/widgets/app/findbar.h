#pragma once

#include "app/objectsearch.h"

#include <QPointer>
#include <QToolBar>

class QLineEdit;
class frmMain;

// The window's find bar: "Suchen nach:" and a text, below the pages. Enter goes to the next
// match (Shift+Enter to the previous), Escape closes the bar and gives the focus back. Which
// box comes next is ObjectSearch's to say; the bar only shows it through the window, which
// scrolls to it and selects it as a click would.
//
// The bar is not modal: the pages stay usable while it is open, and the selection there is
// where the next step starts from.
class FindBar final : public QToolBar
{
    Q_OBJECT
public:
    explicit FindBar(frmMain* window);

    // Shows the bar with the last text selected and the focus in its field. Refused while the
    // field that holds the focus may not be left.
    void Open();
    // The next match (previous when not forward) of the bar's text, or of the last text while
    // the bar is closed; with no text yet, the bar opens to ask for one. The status line says
    // which match it was, or that there was none.
    void FindNext(bool forward);

    QLineEdit* field() const { return m_text; }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void closeBar();

    frmMain* m_window;
    ObjectSearch m_search;
    QLineEdit* m_text;
    // Where the focus was when the bar opened, for when nothing was found since.
    QPointer<QWidget> m_returnFocus;
    bool m_foundSinceOpen = false;
};
