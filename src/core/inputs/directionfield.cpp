#include "inputs/directionfield.h"

DirectionField::DirectionField(QObject* parent) : QObject(parent) {}

void DirectionField::SetText(const QString& text)
{
    if (text == m_text)
        return;
    m_text = text;
    emit textChanged(m_text);
}
