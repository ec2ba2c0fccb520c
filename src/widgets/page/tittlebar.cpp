#include "tittlebar.h"

#include "inputs/palettecolor.h"
#include "inputs/pasteguard.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>

TittleBar::TittleBar(QWidget* parent) : QWidget(parent), m_label(new QLabel(this))
{
    m_label->setObjectName(QStringLiteral("Label2"));
    m_label->setAutoFillBackground(true);
    m_label->setContentsMargins(3, 0, 3, 0);
    m_label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_label->setAccessibleDescription(QStringLiteral("Titel"));
    // The label never takes the mouse: its events reach the title bar and then the box.
    m_label->setAttribute(Qt::WA_TransparentForMouseEvents);
    setAccessibleName(QStringLiteral("Titel"));
    showCaption();
    applyColors();
}

QSize TittleBar::sizeHint() const
{
    return QSize(100, fontMetrics().height() + 4);
}

void TittleBar::SetCaption(const QString& caption)
{
    if (caption == m_caption)
        return;
    m_caption = caption;
    showCaption();
}

void TittleBar::showCaption()
{
    // A caption longer than the strip ends in an ellipsis; the tool tip shows it whole. The tip
    // belongs to the title bar: the label lets the mouse through to it, so it never gets one.
    const int room = m_label->contentsRect().width();
    const QString shown = m_label->fontMetrics().elidedText(m_caption, Qt::ElideRight, qMax(room, 0));
    m_label->setText(shown);
    setToolTip(shown == m_caption ? QString() : m_caption);
    m_label->setAccessibleName(m_caption.isEmpty() ? QStringLiteral("Titel") : m_caption);
}

void TittleBar::SetActiveTitleBarColor(Colors::Rgb color)
{
    m_activeBack = color;
    applyColors();
}

void TittleBar::SetActiveTitleBarTextColor(Colors::Rgb color)
{
    m_activeText = color;
    applyColors();
}

void TittleBar::SetInactiveTitleBarColor(Colors::Rgb color)
{
    m_inactiveBack = color;
    applyColors();
}

void TittleBar::SetInactiveTitleBarTextColor(Colors::Rgb color)
{
    m_inactiveText = color;
    applyColors();
}

void TittleBar::SetActive(bool active)
{
    m_active = active;
    applyColors();
}

void TittleBar::applyColors()
{
    // Resolved against the box's palette, not the label's: the label's own palette is
    // where the result goes.
    const QPalette& scheme = palette();
    QPalette p = m_label->palette();
    p.setColor(QPalette::Window, PaletteColor(m_active ? m_activeBack : m_inactiveBack, scheme));
    p.setColor(QPalette::WindowText, PaletteColor(m_active ? m_activeText : m_inactiveText, scheme));
    m_label->setPalette(p);
}

void TittleBar::Edit()
{
    if (m_edit)
        return;
    m_edit = new QLineEdit(this);
    m_edit->setObjectName(QStringLiteral("Text1"));
    m_edit->setAccessibleName(QStringLiteral("Titel"));
    m_edit->setFrame(false);
    m_edit->setText(m_caption);
    m_edit->selectAll();
    // 30 twips narrower than the strip: two pixels.
    m_edit->setGeometry(0, 0, qMax(width() - 2, 1), height());
    m_edit->installEventFilter(this);
    new PasteGuard(m_edit, [this](const QString& text) {
        if (m_edit)
            PasteGuard::InsertWritable(m_edit, text, m_prompt);
    });
    m_edit->show();
    m_edit->setFocus(Qt::OtherFocusReason);
}

void TittleBar::endEdit(bool commit)
{
    QLineEdit* edit = m_edit;
    if (!edit)
        return;
    // Forgotten first: the focus moving away below must not end the edit a second time.
    m_edit = nullptr;
    const QString text = edit->text();
    if (edit->hasFocus() && parentWidget())
        parentWidget()->setFocus(Qt::OtherFocusReason);
    edit->hide();
    edit->deleteLater();
    if (!commit)
        return;
    SetCaption(text);
    emit Change();
}

bool TittleBar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != m_edit)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            endEdit(true);
            return true;
        }
        if (key == Qt::Key_Escape) {
            endEdit(false);
            return true;
        }
    } else if (event->type() == QEvent::FocusOut) {
        // The field's own menu or another window taking the focus does not end the edit.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::PopupFocusReason && reason != Qt::ActiveWindowFocusReason)
            endEdit(true);
    }
    return QWidget::eventFilter(watched, event);
}

void TittleBar::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    emit DblClick();
    event->accept();
}

void TittleBar::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_label->setGeometry(rect());
    if (m_edit)
        m_edit->setGeometry(0, 0, qMax(width() - 2, 1), height());
    showCaption();
}

void TittleBar::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        applyColors();
    else if (event->type() == QEvent::FontChange)
        showCaption();
}
