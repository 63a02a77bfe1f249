#pragma once

#include "simulator/SystemSettings/AuthorizationSheet.h"
#include "simulator/SystemSettings/ControlClient.h"
#include "simulator/SystemSettings/ExtensionSection.h"
#include "simulator/SystemSettings/FocusPlace.h"
#include "simulator/SystemSettings/NoticeLine.h"

#include <QDBusConnection>
#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

#include <optional>
#include <vector>

namespace simulator::settings {

/// "Privacy & Security": what a person sees of the simulated Mac's extensions and does about them.
class SettingsWindow : public QWidget {
    Q_OBJECT

public:
    /// Asks for the lists at once, and follows every change.
    explicit SettingsWindow(const QDBusConnection& bus);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange();
    void arrangePage();
    void arrangeFooter();
    void connectSection(ExtensionSection& section);
    void connectClient();

    void showLists(const QList<CopyEntry>& copies, const QList<RequestEntry>& requests);
    void showAbsence(const QString& reason, bool canBeStarted);
    void showSections(bool shown);
    void showQuestion(const std::optional<QuestionContent>& question);
    void rememberFocus();
    void orderTabs();
    std::vector<QWidget*> controlsOfExtensions();

    ControlClient client_;
    QVBoxLayout layout_;
    QScrollArea scroll_;
    QWidget page_;
    QVBoxLayout pageLayout_;
    QLabel heading_;
    NoticeLine notice_;
    ExtensionSection cameras_;
    ExtensionSection drivers_;
    ExtensionSection others_;
    QFrame footer_;
    QHBoxLayout footerLayout_;
    QLabel hint_;
    QPushButton restart_;
    AuthorizationSheet sheet_;
    /// Before the lists last changed, or the question was asked.
    FocusPlace focusPlace_;
};

} // namespace simulator::settings
