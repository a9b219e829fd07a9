// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "peers/presentation/ContactCard.h"
#include "peers/presentation/ContactListModel.h"
#include "peers/presentation/DirectorySearch.h"
#include "peers/presentation/IncomingCall.h"
#include "peers/presentation/ModuleCalls.h"
#include "peers/presentation/PopupQueue.h"
#include "peers/presentation/PreviewKeys.h"
#include "platform/framework/KestinModule.h"

#include <QUrl>
#include <QtQml/qqmlregistration.h>

class Screen;

/// The module "Presentation": the phone book in a window. It keeps nothing and decides nothing; what it shows it asks
/// of the directory, and it shows what other modules want to be told.
class Presentation : public KestinModule
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the program")
    Q_PROPERTY(QUrl userPhoto READ userPhoto NOTIFY userPhotoChanged)

public:
    explicit Presentation(Screen &screen);

    bool init() override;
    bool run() override;
    void stop() override;

    /// The bus method. `duration` is in seconds, 0 or less leaves it to the screen; `arguments` take the places of %1,
    /// %2 and so on in the text. What else other modules pass is not used here.
    void takePopup(const QString &text, int duration, const QStringList &arguments);

    ContactListModel &contacts() { return m_contacts; }
    ContactCard &card() { return m_card; }
    IncomingCall &incomingCall() { return m_incomingCall; }
    PopupQueue &popups() { return m_popups; }
    PreviewKeys &previewKeys() { return m_previewKeys; }
    const QUrl &userPhoto() const { return m_userPhoto; }

    /// Whether nothing is asked or searched.
    bool isIdle() const;

Q_SIGNALS:
    void userPhotoChanged();

private Q_SLOTS:
    // What other modules tell, by its event.
    void showResults(const KestinEvent &event);
    void completeByName(const KestinEvent &event);
    void completeByNumber(const KestinEvent &event);
    void takeCreation(const KestinEvent &event);
    void takeUpdate(const KestinEvent &event);
    void takeDeletion(const KestinEvent &event);
    void takePreviewChange(const KestinEvent &event);
    void takeAllAnew(const KestinEvent &event = {});
    void takeUserPhoto(const KestinEvent &event);
    void ring(const KestinEvent &event);
    void endCall(const KestinEvent &event);

private:
    void watchDirectory();
    void connectParts();
    void notifyLoaded();

    Screen &m_screen;
    ModuleCalls m_calls;
    DirectorySearch m_search;
    ContactListModel m_contacts;
    ContactCard m_card;
    IncomingCall m_incomingCall;
    PopupQueue m_popups;
    PreviewKeys m_previewKeys;
    QUrl m_userPhoto;
    std::unique_ptr<ModuleWatch> m_directory;
    bool m_isLoaded = false; ///< the first frame was shown
};
