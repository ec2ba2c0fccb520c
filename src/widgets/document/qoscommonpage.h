#pragma once

#include <QPointer>
#include <QWidget>

class QComboBox;
class QGroupBox;
class QLineEdit;
class QPlainTextEdit;
class QoSCommon;
class StatusLine;
class UserPrompt;
class InputBandwidth;

// The page "Allgemein": shows and edits the document's common settings. Every edit goes to
// the QoSCommon record at once, and every change of the record shows here, so that a file
// read or config.ini loaded is seen without a refresh.
class QoSCommonPage final : public QWidget
{
    Q_OBJECT
public:
    explicit QoSCommonPage(QoSCommon* common, QWidget* parent = nullptr);

    void setPrompt(UserPrompt* prompt);
    void setStatusLine(StatusLine* line);
    QoSCommon* common() const;

private:
    void showProperty(const QString& name);
    void showVersions();

    QPointer<QoSCommon> m_common;
    UserPrompt* m_prompt = nullptr;
    QGroupBox* m_frame1;
    QGroupBox* m_frame2;
    QGroupBox* m_frame3;
    QGroupBox* m_frame4;
    QLineEdit* m_txtQoSInternetDev;
    InputBandwidth* m_txtQoSInternetBandDown;
    InputBandwidth* m_txtQoSInternetBandUp;
    QLineEdit* m_txtQoSLocalNetDev;
    InputBandwidth* m_txtQoSLocalBand;
    QPlainTextEdit* m_txtDescription;
    QComboBox* m_cboQoSVersion;
};
