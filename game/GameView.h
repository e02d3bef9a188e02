#pragma once

#include "app/frame/ZRBaseWindow.h"
#include "game/pong/Game.h"

#include <QTimer>

/// The page with the paddle game. It is stopped at first; while it runs there is a frame every 16 ms. Scores
/// and places are kept while it is stopped.
class GameView : public ZRBaseWindow
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(GameView)

public:
    static constexpr int frameInterval = 16; ///< ms

    explicit GameView(ZRUpdater *updater, QWidget *parent = nullptr);

    void setRunning(bool running);
    bool isRunning() const { return m_frameTimer.isActive(); }

    Pong::Game &game() { return m_game; }

public Q_SLOTS:
    /// The knob: 'L' moves the user's paddle up, 'R' down, until 'S' stops it.
    void gameControl(char control);
    void handleGameFrame();

Q_SIGNALS:
    /// The user wants to leave the game, from the keyboard.
    void left();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;

private:
    Pong::Game m_game;
    QTimer m_frameTimer;
};
