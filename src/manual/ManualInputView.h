#pragma once

#include <QWidget>

class QLabel;

namespace lucentra {

class LocalizationManager;
class LongTextEdit;
class ManualInputViewModel;
class ProgressIndicator;

/// The panel for typed text: an editor above, its translation beneath. It lies on the pane's lower part on a ground of
/// its own, so that small text can be read however clear the glass is. Text that an input method is still composing
/// isn't the editor's yet. Main thread only.
class ManualInputView : public QWidget
{
public:
    /// All but the parent must outlive the view. Under reduced motion nothing turns.
    ManualInputView(ManualInputViewModel &viewModel, const LocalizationManager &localization, bool reduceMotion,
                    QWidget *parent = nullptr);
    void setReduceMotion(bool reduceMotion);
    /// A low panel is all text: without headers, it has no place to tell of a copy.
    bool hasHeaders() const;
    /// Whether Escape would end what an input method is composing.
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
