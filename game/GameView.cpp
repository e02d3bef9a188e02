#include "game/GameView.h"

#include "game/QDrawingContext.h"

#include <QKeyEvent>
#include <QPainter>

#include <optional>

namespace
{

constexpr float fieldWidth = 900.0F;
constexpr float fieldHeight = 650.0F;

// The key's character for the game; what lies beyond a byte is passed as 0.
std::optional<char> gameKey(const QKeyEvent &event)
{
    if (event.text().isEmpty()) {
        return std::nullopt;
    }
    const ushort unit = event.text().at(0).unicode();
    return unit < 256 ? static_cast<char>(unit) : '\0';
}

} // namespace

GameView::GameView(ZRUpdater *updater, QWidget *parent)
    : ZRBaseWindow(updater, parent)
    , m_game(fieldWidth, fieldHeight)
    , m_frameTimer(this)
{
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName(tr("Paddle game"));
    m_frameTimer.setTimerType(Qt::PreciseTimer);
    connect(&m_frameTimer, &QTimer::timeout, this, &GameView::handleGameFrame);
}

void GameView::setRunning(bool running)
{
    if (running) {
        m_frameTimer.start(frameInterval);
    } else {
        m_frameTimer.stop();
    }
}

void GameView::gameControl(char control)
{
    if (control == 'S') {
        m_game.keyReleased('u');
    } else {
        m_game.keyPressed(control);
    }
}

void GameView::handleGameFrame()
{
    m_game.update();
    update();
}

void GameView::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    QDrawingContext context(painter);
    m_game.draw(context);

    painter.setPen(QColor(200, 200, 200, 255));
    painter.setFont(QFont(QStringLiteral("Helvetica"), 40, QFont::Bold, false));
    painter.drawText(300, 50, QStringLiteral("%1").arg(m_game.userScore()));
    painter.drawText(600, 50, QStringLiteral("%1").arg(m_game.computerScore()));
}

void GameView::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape) {
        Q_EMIT left();
        return;
    }
    if (const auto key = gameKey(*event)) {
        m_game.keyPressed(*key);
    }
}

void GameView::keyReleaseEvent(QKeyEvent *event)
{
    if (const auto key = gameKey(*event)) {
        m_game.keyReleased(*key);
    }
}
