#include "qoscommonpage.h"

#include "app/dialogprompt.h"
#include "base/writablevalue.h"
#include "inputs/inputbandwidth.h"
#include "inputs/pasteguard.h"
#include "model/qoscommon.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QVBoxLayout>

#include <functional>

namespace {

QLabel* label(const QString& text, QWidget* buddy, QWidget* parent)
{
    auto* l = new QLabel(text, parent);
    l->setBuddy(buddy->focusProxy() ? buddy->focusProxy() : buddy);
    return l;
}

QLabel* note(const QString& text, QWidget* parent)
{
    auto* l = new QLabel(text, parent);
    l->setWordWrap(true);
    l->setForegroundRole(QPalette::PlaceholderText);
    return l;
}

// The description is written as comment lines: it takes line breaks and quotes, and only a
// character the code page lacks is refused. Every way of pasting comes here.
class DescriptionEdit final : public QPlainTextEdit
{
public:
    DescriptionEdit(std::function<UserPrompt*()> prompt, QWidget* parent)
        : QPlainTextEdit(parent), m_prompt(std::move(prompt))
    {}

protected:
    void insertFromMimeData(const QMimeData* source) override
    {
        const QString refusal = WritableValue::PasteRefusal(source->text(), WritableValue::Place::Comment);
        if (!refusal.isEmpty()) {
            DialogPrompt::Tell(m_prompt(), this, refusal, UserPrompt::Icon::Warning);
            return;
        }
        QPlainTextEdit::insertFromMimeData(source);
    }

private:
    std::function<UserPrompt*()> m_prompt; // the page's, which may be set later
};

} // namespace

QoSCommonPage::QoSCommonPage(QoSCommon* common, QWidget* parent)
    : QWidget(parent), m_common(common), m_frame1(new QGroupBox(QStringLiteral("Internetverbindung"), this)),
      m_frame2(new QGroupBox(QStringLiteral("Lokales Netzwerk"), this)),
      m_frame3(new QGroupBox(QStringLiteral("Beschreibung"), this)), m_frame4(new QGroupBox(this)),
      m_txtQoSInternetDev(new QLineEdit(m_frame1)),
      m_txtQoSInternetBandDown(new InputBandwidth(common->BandDownField(), m_frame1)),
      m_txtQoSInternetBandUp(new InputBandwidth(common->BandUpField(), m_frame1)),
      m_txtQoSLocalNetDev(new QLineEdit(m_frame2)),
      m_txtQoSLocalBand(new InputBandwidth(common->LocalBandField(), m_frame2)),
      m_txtDescription(new DescriptionEdit([this] { return m_prompt; }, m_frame3)),
      m_cboQoSVersion(new QComboBox(m_frame4))
{
    setObjectName(QStringLiteral("Common1"));
    m_frame1->setObjectName(QStringLiteral("Frame1"));
    m_frame2->setObjectName(QStringLiteral("Frame2"));
    m_frame3->setObjectName(QStringLiteral("Frame3"));
    m_frame4->setObjectName(QStringLiteral("Frame4"));
    m_frame1->setAccessibleName(m_frame1->title());
    m_frame2->setAccessibleName(m_frame2->title());
    m_frame3->setAccessibleName(m_frame3->title());
    m_frame4->setAccessibleName(QStringLiteral("Version"));
    m_txtQoSInternetDev->setObjectName(QStringLiteral("txtQoSInternetDev"));
    m_txtQoSInternetBandDown->setObjectName(QStringLiteral("txtQoSInternetBandDown"));
    m_txtQoSInternetBandUp->setObjectName(QStringLiteral("txtQoSInternetBandUp"));
    m_txtQoSLocalNetDev->setObjectName(QStringLiteral("txtQoSLocalNetDev"));
    m_txtQoSLocalBand->setObjectName(QStringLiteral("txtQoSLocalBand"));
    m_txtDescription->setObjectName(QStringLiteral("txtDescription"));
    m_cboQoSVersion->setObjectName(QStringLiteral("cboQoSVersion"));

    const int deviceWidth =
        m_txtQoSInternetDev->fontMetrics().horizontalAdvance(QStringLiteral("eth0.1000xx")) + 16;
    m_txtQoSInternetDev->setMaximumWidth(deviceWidth);
    m_txtQoSLocalNetDev->setMaximumWidth(deviceWidth);
    m_txtQoSInternetDev->setAccessibleName(QStringLiteral("Gerät zum Internet"));
    m_txtQoSLocalNetDev->setAccessibleName(QStringLiteral("Gerät zum lokalen Netzwerk"));
    m_txtQoSInternetBandDown->setLabel(QStringLiteral("Bandbreite Down"));
    m_txtQoSInternetBandUp->setLabel(QStringLiteral("Bandbreite Up"));
    m_txtQoSLocalBand->setLabel(QStringLiteral("Bandbreite lokales Netzwerk"));
    m_txtDescription->setAccessibleName(QStringLiteral("Beschreibung"));
    m_txtDescription->setTabChangesFocus(true);
    // Small enough that the whole page fits a small window; it grows with the window.
    m_txtDescription->setMinimumHeight(m_txtDescription->fontMetrics().lineSpacing() * 3 + 12);
    m_cboQoSVersion->setAccessibleName(QStringLiteral("Version"));
    m_cboQoSVersion->setSizeAdjustPolicy(QComboBox::AdjustToContents);

    auto* grid1 = new QGridLayout(m_frame1);
    grid1->addWidget(label(QStringLiteral("&Gerät:"), m_txtQoSInternetDev, m_frame1), 0, 0);
    grid1->addWidget(m_txtQoSInternetDev, 0, 1);
    grid1->addWidget(note(QStringLiteral("Device über das Daten ins Internet übertragen werden"), m_frame1),
                     0, 2);
    grid1->addWidget(label(QStringLiteral("Bandbreite &Down:"), m_txtQoSInternetBandDown, m_frame1), 1, 0);
    grid1->addWidget(m_txtQoSInternetBandDown, 1, 1, 1, 2, Qt::AlignLeft);
    grid1->addWidget(label(QStringLiteral("Bandbreite &Up:"), m_txtQoSInternetBandUp, m_frame1), 2, 0);
    grid1->addWidget(m_txtQoSInternetBandUp, 2, 1, 1, 2, Qt::AlignLeft);
    grid1->setColumnStretch(2, 1);

    auto* grid2 = new QGridLayout(m_frame2);
    grid2->addWidget(label(QStringLiteral("G&erät:"), m_txtQoSLocalNetDev, m_frame2), 0, 0);
    grid2->addWidget(m_txtQoSLocalNetDev, 0, 1);
    grid2->addWidget(note(QStringLiteral("Device über das das lokale Netzwerk angebunden ist"), m_frame2), 0,
                     2);
    grid2->addWidget(label(QStringLiteral("&Bandbreite"), m_txtQoSLocalBand, m_frame2), 1, 0);
    grid2->addWidget(m_txtQoSLocalBand, 1, 1, 1, 2, Qt::AlignLeft);
    grid2->setColumnStretch(2, 1);
    // Both frames line their fields up in one column.
    const int labelWidth = qMax(grid1->itemAtPosition(1, 0)->widget()->sizeHint().width(),
                                grid2->itemAtPosition(1, 0)->widget()->sizeHint().width());
    grid1->setColumnMinimumWidth(0, labelWidth);
    grid2->setColumnMinimumWidth(0, labelWidth);

    auto* box3 = new QVBoxLayout(m_frame3);
    box3->addWidget(m_txtDescription);

    auto* box4 = new QHBoxLayout(m_frame4);
    box4->addWidget(label(QStringLiteral("&Version:"), m_cboQoSVersion, m_frame4));
    box4->addWidget(m_cboQoSVersion);
    box4->addStretch(1);

    auto* column = new QVBoxLayout(this);
    column->addWidget(m_frame1);
    column->addWidget(m_frame2);
    column->addWidget(m_frame3, 1); // the description takes what the window gives
    column->addWidget(m_frame4);

    for (QLineEdit* device : {m_txtQoSInternetDev, m_txtQoSLocalNetDev})
        new PasteGuard(device, [this, device](const QString& text) {
            PasteGuard::InsertWritable(device, text, m_prompt);
        });
    connect(m_txtQoSInternetDev, &QLineEdit::textEdited, this,
            [this](const QString& t) { m_common->SetQoSInternetDev(t); });
    connect(m_txtQoSLocalNetDev, &QLineEdit::textEdited, this,
            [this](const QString& t) { m_common->SetQoSLocalNetDev(t); });
    connect(m_txtDescription, &QPlainTextEdit::textChanged, this, [this] {
        const QString text = m_txtDescription->toPlainText();
        if (text != m_common->QoSDescription())
            m_common->SetQoSDescription(text);
    });
    connect(m_cboQoSVersion, &QComboBox::activated, this,
            [this](int index) { m_common->SelectVersion(index); });
    connect(common, &QoSCommon::propertyChanged, this, &QoSCommonPage::showProperty);

    for (const char* name : {"QoSInternetDev", "QoSLocalNetDev", "QoSDescription", "QoSVersion"})
        showProperty(QString::fromLatin1(name));
}

QoSCommon* QoSCommonPage::common() const
{
    return m_common;
}

void QoSCommonPage::setStatusLine(StatusLine* line)
{
    m_txtQoSInternetBandDown->setStatusLine(line);
    m_txtQoSInternetBandUp->setStatusLine(line);
    m_txtQoSLocalBand->setStatusLine(line);
}

void QoSCommonPage::setPrompt(UserPrompt* prompt)
{
    m_prompt = prompt;
    m_txtQoSInternetBandDown->setPrompt(prompt);
    m_txtQoSInternetBandUp->setPrompt(prompt);
    m_txtQoSLocalBand->setPrompt(prompt);
}

void QoSCommonPage::showProperty(const QString& name)
{
    if (!m_common)
        return;
    auto showText = [](QLineEdit* edit, const QString& text) {
        if (edit->text() != text)
            edit->setText(text);
    };
    if (name == u"QoSInternetDev")
        showText(m_txtQoSInternetDev, m_common->QoSInternetDev());
    else if (name == u"QoSLocalNetDev")
        showText(m_txtQoSLocalNetDev, m_common->QoSLocalNetDev());
    else if (name == u"QoSDescription" && m_txtDescription->toPlainText() != m_common->QoSDescription())
        m_txtDescription->setPlainText(m_common->QoSDescription());
    else if (name == u"QoSVersion")
        showVersions();
}

void QoSCommonPage::showVersions()
{
    const QStringList versions = m_common->VersionList();
    QStringList shown;
    for (int i = 0; i < m_cboQoSVersion->count(); ++i)
        shown << m_cboQoSVersion->itemText(i);
    if (shown != versions) {
        const QSignalBlocker block(m_cboQoSVersion);
        m_cboQoSVersion->clear();
        m_cboQoSVersion->addItems(versions);
    }
    m_cboQoSVersion->setCurrentIndex(m_common->VersionIndex());
}
