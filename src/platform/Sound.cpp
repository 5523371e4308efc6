#include "platform/Sound.h"

#include <QAudioDevice>
#include <QFile>
#include <QMediaDevices>
#include <QSoundEffect>
#include <QString>
#include <QUrl>

namespace larder {

class Sound::Player : public QSoundEffect {
  public:
    using QSoundEffect::QSoundEffect;
};

Sound::Sound() = default;
Sound::~Sound() = default;

void Sound::Play(const std::string& nativePath) {
    if (OnPlay) OnPlay(nativePath);
    const QString path = QFile::decodeName(QByteArray::fromStdString(nativePath));
    if (!QFile::exists(path)) return;
    if (player_ == nullptr) {
        if (QMediaDevices::defaultAudioOutput().isNull()) return;
        player_ = std::make_unique<Player>();
    }
    const QUrl source = QUrl::fromLocalFile(path);
    if (player_->source() != source) player_->setSource(source);
    player_->play();
}

}  // namespace larder
