#pragma once

#include <QWidget>

class QLabel;

namespace lucentra {

class LocalizationManager;
class LongTextEdit;
class ManualInputViewModel;
class ProgressIndicator;

/// The panel for typed text: an editor with the translation below it. It covers the lower part of the pane with its own
/// background, so that small text is readable on clear glass. Text that an input method is composing is not translated.
class ManualInputView : public QWidget
{
public:
    /// With reduced motion, the progress indicator doesn't turn.
    ManualInputView(ManualInputViewModel &viewModel, const LocalizationManager &localization, bool reduceMotion,
                    QWidget *parent = nullptr);
    void setReduceMotion(bool reduceMotion);
    /// A low panel has no headers, and so no place for the copy feedback.
    bool hasHeaders() const;
    /// Whether Escape would end a composition of an input method.
    bool takesEscape() const;

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    QWidget *makeSourceHeader();
    QWidget *makeResultHeader();
    void renderTexts();
    void render();

    ManualInputViewModel &m_viewModel;
    const LocalizationManager &m_localization;
    bool m_reduceMotion;
    QLabel *m_sourceTitle;
    QLabel *m_hint;
    QLabel *m_resultTitle;
    QLabel *m_note;
    ProgressIndicator *m_progress;
    QLabel *m_translating;
    QWidget *m_checkMark;
    QLabel *m_copied;
    QWidget *m_sourceHeader;
    QWidget *m_resultHeader;
    LongTextEdit *m_editor;
    LongTextEdit *m_result;
    QString m_shownTranslation;
};

} // namespace lucentra
