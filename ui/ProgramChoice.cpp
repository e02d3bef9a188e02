#include "ui/ProgramChoice.h"

#include "app/frame/FittingText.h"
#include "app/frame/Look.h"
#include "engine/ProgramSwitch.h"
#include "mapping/ProgramMappings.h"

#include <QActionGroup>

#include <algorithm>

namespace
{

const QLatin1String textStyle("QLabel { color : rgba(255,255,255,0.87);  background-color: rgba(0,0,0,0);}");
const QLatin1String arrowStyle("background-image: url(:/icons/comboarrow.png);");
constexpr QSize arrowSize(13, 7);
constexpr int gap = 6;
constexpr int widestName = 240; // pixels, in the menu

// A name in an entry's text, where "&" makes the next letter a key.
QString inMenu(const QString &name, const QFontMetrics &metrics)
{
    return metrics.elidedText(name, Qt::ElideRight, widestName)
        .replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

ProgramChoice::ProgramChoice(const ProgramSwitch &programs, const ProgramMappings &mappings, QWidget *parent)
    : ComboMenuBar(size, parent)
    , m_programs(programs)
    , m_mappings(mappings)
    , m_text(new QLabel(this))
    , m_forAll(menu().addAction(tr("For all programs")))
    , m_onlyFor(menu().addAction(QString()))
{
    setObjectName(QStringLiteral("programChoice"));
    m_text->setStyleSheet(textStyle);
    m_text->setFont(Look::font(Look::Face::Page, 11));
    m_arrow = Look::addPicture(this, {QPoint(), arrowSize}, arrowStyle);
    finishLook();

    auto *either = new QActionGroup(this);
    for (QAction *action : {m_forAll, m_onlyFor}) {
        action->setCheckable(true);
        either->addAction(action);
    }
    connect(&mappings, &ProgramMappings::changed, this, &ProgramChoice::showWhose);
    showWhose();
}

ProgramChoice::~ProgramChoice() = default;

void ProgramChoice::showWhose()
{
    const QString text = m_mappings.inUse().isEmpty() ? tr("For all programs")
                                                      : tr("Only for %1").arg(m_mappings.titleInUse());
    const QString help = tr("For which programs these buttons do this");
    m_text->resize(size.width() - 3 * gap - arrowSize.width(), size.height());
    FittingText::show(m_text, text, help);
    placeInTheMiddle();
    setAccessibleName(text);
    setAccessibleDescription(help);
}

void ProgramChoice::placeInTheMiddle()
{
    const int text = std::min(m_text->sizeHint().width(), m_text->width());
    const int left = (size.width() - text - gap - arrowSize.width()) / 2;
    m_text->setGeometry(left, 0, text, size.height());
    m_arrow->move(left + text + gap, (size.height() - arrowSize.height()) / 2 + 1);
}

void ProgramChoice::dislayMenu()
{
    const bool own = !m_mappings.inUse().isEmpty();
    m_offered =
        own ? FocusedProgram::Program{m_mappings.inUse(), m_mappings.titleInUse()} : m_programs.last();
    const bool any = !m_offered.id.isEmpty();
    m_onlyFor->setText(any ? tr("Only for %1").arg(inMenu(m_offered.name, menu().fontMetrics()))
                           : tr("Only for the program used last"));
    m_onlyFor->setEnabled(any);
    (own ? m_onlyFor : m_forAll)->setChecked(true);
    runMenu({0, size.height()});
}

void ProgramChoice::carryOut(const QAction &chosen)
{
    const bool own = !m_mappings.inUse().isEmpty();
    if (&chosen == m_forAll && own) {
        Q_EMIT forAllInsteadOf(m_offered.id);
    } else if (&chosen == m_onlyFor && !own) {
        Q_EMIT onlyFor(m_offered);
    }
}
