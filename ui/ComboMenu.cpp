#include "ui/ComboMenu.h"

#include "app/frame/ActionLabels.h"
#include "app/frame/Look.h"
#include "mapping/SpecialAction.h"
#include "ui/BoxOutline.h"
#include "ui/ComboMenuEntries.h"
#include "ui/ComboMenuLabel.h"
#include "ui/ControlTip.h"
#include "ui/MidiMenu.h"
#include "ui/ShortcutKey.h"
#include "ui/UiLog.h"

#include <algorithm>

namespace
{

constexpr QSize menuSize(160, 40);
constexpr QPoint menuPlace(0, 40); // of the pop-up, below the widget

// The dialog for MIDI tells a button's from the knob's by this.
constexpr int buttonMidiOffset = 10;

const QLatin1String frameStyle("background-image: url(:/icons/comboboarder.png);");
const QLatin1String arrowStyle("background-image: url(:/icons/comboarrow.png);");
const QLatin1String titleStyle("QLabel { color : rgba(255,255,255,1);  background-color: rgba(0,0,0,0);}");
const QLatin1String
    layersStyle("QLabel { color : rgba(255,255,255,0.87);  background-color: rgba(0,0,0,0);}");

bool says(const QString &text, const char *words)
{
    return text.contains(QLatin1String(words), Qt::CaseInsensitive);
}

// What a button sends, with the values of its dialog.
shortCut withMidi(shortCut record, int ch, int cc, int v_on, int v_off, bool note, bool v_off_enable)
{
    record.channel = ch;
    record.cc = cc;
    record.v_on = v_on;
    record.v_off = v_off;
    record.note = note;
    record.v_off_enable = v_off_enable;
    return record;
}

shortCut marked(shortCut record, ActionMarker kind, const QString &label)
{
    record.key1 = kind;
    record.key2 = static_cast<int>(SpecialAction::Midi);
    record.key3 = 0;
    record.label = label;
    return record;
}

} // namespace

ComboMenu::ComboMenu(int id, QObject *deviceLink, QWidget *parent, Settings &settings)
    : ComboMenuBar(menuSize, parent)
    , m_title(nullptr)
    , m_layers(nullptr)
    , m_deviceLink(deviceLink)
    , m_id(id)
    , m_settings(settings, id)
{
    setAccessibleName(ControlTip::name(id));
    buildLabels();
    buildMenu();

    for (const Layer layer : Layers::all) {
        m_assignments[layer] = m_settings.read(layer);
        showLabel(layer, m_assignments[layer].label);
    }
}

ComboMenu::~ComboMenu() = default;

void ComboMenu::buildLabels()
{
    addPicture({QPoint(0, 0), menuSize}, frameStyle);
    addPicture({142, 18, 13, 7}, arrowStyle);

    const auto text = [this](const QRect &place, const QString &style, const QFont &font) {
        auto *label = Look::addPicture<ComboMenuLabel>(this, place, style);
        label->setContentsMargins(0, 0, place.width() - ActionLabels::room, 0); // clear of the arrow
        label->setFont(font);
        return label;
    };
    m_title = text({10, 0, 150, 20}, titleStyle, ActionLabels::titleFont());
    m_layers = text({10, 20, 150, 20}, layersStyle, ActionLabels::layersFont());
    m_layers->setParts({QString(), QString()});
    m_outline = new BoxOutline(this);
    finishLook();
}

void ComboMenu::buildMenu()
{
    for (const Layer layer : Layers::all) {
        if (layer != Layer::Normal) {
            menu().addSeparator();
        }
        QMenu *layerMenu = menu().addMenu(Layers::shownName(layer));
        applyStyle(*layerMenu);
        ComboMenuEntries::fill(*layerMenu, layer == Layer::Normal);
        m_layerMenus[layer] = layerMenu;
    }
}

// Twenty dialogs would be a good part of the program's start and of its memory: each is made when it is first
// asked for.
ShortcutKey &ComboMenu::shortcutKey()
{
    if (m_shortcutKey == nullptr) {
        m_shortcutKey = new ShortcutKey(parentWidget() ? parentWidget() : this);
        connect(m_shortcutKey, &ShortcutKey::newShorcut, this, &ComboMenu::loadShorcut);
    }
    return *m_shortcutKey;
}

MidiMenu &ComboMenu::openedMidiMenu(const QString &subject)
{
    if (m_midiMenu == nullptr) {
        m_midiMenu = new MidiMenu(parentWidget() ? parentWidget() : this);
        connect(m_midiMenu, &MidiMenu::newMidi, this, &ComboMenu::loadMidi);
        connect(m_midiMenu, &MidiMenu::newMidiKnob, this, &ComboMenu::loadMidiKnob);
    }
    m_midiMenu->setSubject(subject);
    ++m_midiEdit;
    return *m_midiMenu;
}

QString ComboMenu::inWords(Layer layer) const
{
    return ComboMenuEntries::inWords(assignment(layer));
}

QStringList ComboMenu::cutLabels() const
{
    QVector<Layer> cut;
    if (!m_title->cutParts().isEmpty()) {
        cut << Layer::Normal;
    }
    const QVector<int> parts = m_layers->cutParts();
    for (const int part : parts) {
        cut << (part == 0 ? Layer::Shift1 : Layer::Shift2);
    }
    QStringList lines;
    for (const Layer layer : qAsConst(cut)) {
        lines << tr("%1, %2: %3")
                     .arg(accessibleName(), Layers::shownName(layer),
                          ComboMenuEntries::displayed(m_shownLabels[layer]));
    }
    return lines;
}

void ComboMenu::setHeldLayer(Layer layer)
{
    m_layers->setStandingOut(Layers::number(layer) - 1);
}

void ComboMenu::setPressed(bool pressed)
{
    m_outline->setVisible(pressed);
}

void ComboMenu::dislayMenu()
{
    runMenu(menuPlace);
}

void ComboMenu::carryOut(const QAction &chosen)
{
    refresh(); // the click itself has toggled the entry's check mark
    for (const Layer layer : Layers::all) {
        const QList<QAction *> actions = m_layerMenus[layer]->actions();
        if (std::find(actions.begin(), actions.end(), &chosen) != actions.end()) {
            choose(layer, chosen.data().toString());
            return;
        }
    }
}

// What the user has chosen for a layer. The tests' order matters: a text may pass more than one.
void ComboMenu::choose(Layer layer, const QString &text)
{
    const QString subject = tr("%1, %2").arg(accessibleName(), Layers::shownName(layer));
    if (says(text, "shortcut key")) {
        shortcutKey().setSubject(subject);
        shortcutKey().show(Layers::number(layer));
    } else if (says(text, "midi for knob")) {
        openedMidiMenu(subject).showKnob(Layers::number(layer), m_id, assignment(layer));
    } else if (says(text, "midi")) {
        openedMidiMenu(subject).show(Layers::number(layer), m_id + buttonMidiOffset, assignment(layer));
    } else {
        chooseSpecialAction(layer, text);
    }
}

void ComboMenu::chooseSpecialAction(Layer chosen, const QString &text)
{
    // A button that shifts does so in every layer: it must still be one while it is held.
    const bool everywhere = chosen == Layer::Normal && says(text, "shift");
    const QString label = ComboMenuEntries::labelFor(text);
    QMap<Layer, shortCut> changed;
    for (const Layer layer : Layers::all) {
        if (layer != chosen && !everywhere) {
            continue;
        }
        showLabel(layer, label);
        if (m_deviceLink) {
            shortCut &assignment = m_assignments[layer];
            assignment.key1 = SPECIAL_ACTION;
            assignment.key2 = specialActionCode(text);
            assignment.key3 = 0;
            assignment.label = label;
            if (m_storing) {
                m_settings.writeKeys(layer, assignment);
            }
            changed.insert(layer, assignment);
        }
    }
    if (!changed.isEmpty()) {
        refresh();
        // Not reported as a changed action, on purpose: only a captured shortcut writes the working copy.
        Q_EMIT assignmentChanged(changed);
    }
}

void ComboMenu::showLabel(Layer layer, const QString &label)
{
    m_shownLabels[layer] = label;
    if (layer == Layer::Normal) {
        followShift(label);
    }
    refresh();
}

void ComboMenu::followShift(const QString &text)
{
    const bool shifts = says(text, "shift");
    for (const Layer layer : {Layer::Shift1, Layer::Shift2}) {
        m_layerMenus[layer]->setEnabled(!shifts);
        if (shifts) {
            m_shownLabels[layer] = text;
        }
    }
}

void ComboMenu::refresh()
{
    PerLayer<QString> shown;
    for (const Layer layer : Layers::all) {
        shown[layer] = ComboMenuEntries::displayed(m_shownLabels[layer]).toUpper();
        ComboMenuEntries::check(*m_layerMenus[layer], m_assignments[layer]);
    }
    m_title->setParts({shown[Layer::Normal]});
    m_layers->setParts({shown[Layer::Shift1], shown[Layer::Shift2]});

    const QStringList plain = ComboMenuEntries::inWords(m_assignments);
    setAccessibleDescription(plain.join(QLatin1String(". ")));
    setToolTip(ControlTip::text(accessibleName(), plain, tr("Click to change what it does")));
}

void ComboMenu::setAssignment(Layer layer, const shortCut &action)
{
    qCDebug(lcUi).noquote().nospace()
        << "B_ID: " << m_id << " type: " << Layers::number(layer) << " received shortcut: " << action.label;
    m_assignments[layer] = action;
    if (m_storing) {
        m_settings.write(layer, action);
    }
    showLabel(layer, action.label);
}

void ComboMenu::getShorcut(int type, const shortCut &shortcut)
{
    assign(type, shortcut, 0);
}

void ComboMenu::assign(int type, const shortCut &record, int edit)
{
    if (const std::optional<Layer> layer = Layers::fromNumber(type)) {
        setAssignment(*layer, record);
        Q_EMIT assignmentChanged({{*layer, record}}, edit);
    }
}

shortCut ComboMenu::recordOf(int type) const
{
    const std::optional<Layer> layer = Layers::fromNumber(type);
    return layer ? assignment(*layer) : shortCut();
}

// The three below change what they are about and leave the rest of the layer's record as it is, so that the
// dialogs open with it again.
void ComboMenu::loadShorcut(int type, int key1, int key2, int key3, const QString &shortcut)
{
    shortCut record = recordOf(type);
    record.key1 = key1;
    record.key2 = key2;
    record.key3 = key3;
    record.label = shortcut;
    getShorcut(type, record);
    Q_EMIT onActionChanged();
}

void ComboMenu::loadMidi(int type, int ch, int cc, int v_on, int v_off, bool note, bool v_off_enable)
{
    qCDebug(lcUi) << "New MIDI:" << type << ch << cc << v_on << v_off << note << v_off_enable;
    const shortCut record = withMidi(recordOf(type), ch, cc, v_on, v_off, note, v_off_enable);
    assign(type, marked(record, MIDI_BUTTON_ACTION, QStringLiteral("Midi")), m_midiEdit);
}

void ComboMenu::loadMidiKnob(int type, int ch, int cc, int v_on, int v_off, bool note, bool v_off_enable,
                             int knobcc, bool m01h, bool m3fh, bool m0_127)
{
    qCDebug(lcUi) << "New MIDI for Knob:" << type << ch << cc << v_on << v_off << note << v_off_enable
                  << knobcc << m01h << m3fh << m0_127;
    shortCut record = withMidi(recordOf(type), ch, cc, v_on, v_off, note, v_off_enable);
    record.knobcc = knobcc;
    record.m01h = m01h;
    record.m3fh = m3fh;
    record.m0_127 = m0_127;
    assign(type, marked(record, MIDI_KNOB_ACTION, QStringLiteral("Midi for Knob")), m_midiEdit);
}
