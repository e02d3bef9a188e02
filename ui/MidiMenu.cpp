#include "ui/MidiMenu.h"

#include "app/frame/ClickableLabel.h"
#include "app/frame/FittingText.h"
#include "app/frame/FocusFrame.h"
#include "ui/NumberField.h"
#include "ui/UiLog.h"

#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>

namespace
{

constexpr QSize panelSize(304, 200);
constexpr int highestChannel = 15;
constexpr int highestValue = 127;

const QLatin1String labelStyle("QLabel { color : #2D2D2D;}");
const QLatin1String checkBoxStyle("QCheckBox { color : #2D2D2D;}");

constexpr char fieldRules[] =
    "QLineEdit { background-color: white; border: 1px solid #8a8a8a; border-radius: 2px; padding: 0 5px;"
    " selection-color: white; selection-background-color: @accent; }"
    "QLineEdit:focus { border: 2px solid @accent; padding: 0 4px; }"
    // The boxes overlap, so they have to be transparent, and their frames are drawn by rules then.
    "QCheckBox { background-color: transparent; spacing: 4px; }"
    "QCheckBox::indicator { width: 10px; height: 10px; border: 1px solid #8a8a8a; border-radius: 2px;"
    " background-color: white; }"
    "QCheckBox::indicator:hover, QCheckBox::indicator:focus { border-color: @accent; }"
    "QCheckBox::indicator:checked { background-color: @accent; border-color: @accent;"
    " image: url(:/icons/check.png); }";

// The general purpose controllers, which instruments leave to the user.
constexpr int usualKnobController = 16;
constexpr int usualTouchController = 17;
constexpr int usualTouchNote = 60;

constexpr int nothing = -1; // the number of a touch that sends nothing

QFont dialogFont(int pointSize)
{
    return Look::font(Look::Face::DialogStrong, pointSize);
}

bool isEmpty(const shortCut &record)
{
    return record.channel == 0 && record.cc == 0 && record.v_on == 0 && record.v_off == 0 &&
           record.knobcc == 0 && !record.note && !record.m01h && !record.m3fh && !record.m0_127;
}

// A hand on the knob is no message yet: whoever wants one asks for it.
shortCut withUsualValues(shortCut record, bool knob)
{
    record.channel = 1;
    record.cc = knob ? nothing : usualTouchController;
    record.v_on = 127;
    record.v_off = 0;
    record.knobcc = usualKnobController;
    record.m0_127 = true;
    return record;
}

} // namespace

MidiMenu::MidiMenu(QWidget *parent)
    : OverlayDialog(panelSize, GrabNothing, parent)
{
    addStyle(Look::accented(fieldRules));
    addLabels();
    addCheckBoxes();
    addFields();
    m_ok = addPicture<ClickableLabel>(QStringLiteral("ok"), {205, 300, 87, 22}, tr("OK"),
                                      tr("Closes the dialog"));
    connectAll();

    const QList<QWidget *> order = {m_fields[Channel],
                                    m_fields[KnobCC],
                                    m_mode7Fh01h,
                                    m_mode3Fh41h,
                                    m_modeAbsolute,
                                    m_ccOnTouch,
                                    m_noteOnTouch,
                                    m_fields[TouchNumber],
                                    m_fields[TouchValue],
                                    m_afterTouch,
                                    m_fields[AfterTouchValue],
                                    m_ok};
    for (int i = 1; i < order.size(); ++i) {
        setTabOrder(order.at(i - 1), order.at(i));
    }
}

void MidiMenu::addLabels()
{
    m_title = addText(tr("MIDI"), {105, 8, 100, 16}, QStringLiteral("QLabel { color :#414141;}"),
                      Look::font(Look::Face::DialogLight, 12, QFont::Bold));
    addSubject({10, 26, 284, 16});
    addText(tr("Channel"), {45, 50, 67, 30}, QStringLiteral("QLabel { color : #2D2D2D; }"), dialogFont(12));
    m_knobLabel = addText(tr("CC on move"), {45, 90, 90, 30}, labelStyle, dialogFont(12));
    m_touchLabel = addText(tr("Touch"), {45, 210, 72, 30}, labelStyle, dialogFont(12));
}

QCheckBox *MidiMenu::addCheckBox(const QString &text, const QRect &place, const QString &style, int pointSize,
                                 const QString &toolTip)
{
    auto *box = new QCheckBox(panel());
    box->setGeometry(place);
    box->setStyleSheet(style);
    box->setFont(dialogFont(pointSize));
    FittingText::show(box, text, toolTip);
    new FocusFrame(box);
    return box;
}

void MidiMenu::addCheckBoxes()
{
    m_mode7Fh01h = addCheckBox(tr("7Fh/01h"), {45, 122, 105, 30}, checkBoxStyle, 10,
                               tr("Each step to the left sends 127, each step to the right 1"));
    m_mode3Fh41h = addCheckBox(tr("03Fh/41h"), {125, 122, 105, 30}, checkBoxStyle, 10,
                               tr("Each step to the left sends 63, each step to the right 65"));
    m_modeAbsolute = addCheckBox(tr("absolute"), {200, 122, 105, 30}, checkBoxStyle, 10,
                                 tr("Turning counts from 0 to 127"));
    m_ccOnTouch = addCheckBox(tr("CC on touch"), {45, 162, 110, 30}, checkBoxStyle, 10,
                              tr("A touch sends a control change"));
    // Beside the panel until the dialog is shown for the first time.
    m_noteOnTouch =
        addCheckBox(tr("Note on touch"), {545, 182, 110, 30},
                    QStringLiteral("QCheckBox { color : #2D2D2D; }"), 10, tr("A touch sends a note"));
    m_afterTouch = addCheckBox(tr("After Touch"), {45, 250, 105, 30}, checkBoxStyle, 12,
                               tr("Letting go sends a value too"));
}

void MidiMenu::addFields()
{
    const QString plain = QStringLiteral("QLineEdit { color : #2D2D2D;}");
    const QString spaced = QStringLiteral("QLineEdit { color : #2D2D2D; }");
    const QString white = QStringLiteral("QLineEdit { color : #2D2D2D;  background-color:white}");
    const struct {
        QRect place;
        int highest;
        QString style;
        QString name;
    } fields[FieldCount] = {
        {{160, 50, 100, 30}, highestChannel, plain, tr("Channel")},
        {{160, 90, 100, 30}, highestValue, spaced, tr("Controller that turning sends")},
        {{160, 170, 100, 30}, highestValue, plain, tr("Controller or note that a touch sends")},
        {{160, 210, 100, 30}, highestValue, spaced, tr("Value that a touch sends")},
        {{160, 250, 100, 30}, highestValue, white, tr("Value that letting go sends")},
    };
    for (std::size_t i = 0; i < FieldCount; ++i) {
        const auto &row = fields[i];
        auto *field = new NumberField(row.highest, row.style, panel());
        field->setGeometry(row.place);
        field->setFont(dialogFont(12));
        field->setAccessibleName(row.name);
        field->setToolTip(tr("%1, 0 to %2").arg(row.name).arg(row.highest));
        m_fields[i] = field;
    }
}

void MidiMenu::connectAll()
{
    connect(m_ok, &ClickableLabel::clicked, this, &MidiMenu::bn_ok_slot);
    connect(m_ccOnTouch, &QCheckBox::clicked, this, &MidiMenu::checkCC_slot);
    connect(m_noteOnTouch, &QCheckBox::clicked, this, &MidiMenu::checkNote_slot);
    connect(m_afterTouch, &QCheckBox::clicked, this,
            [this](bool checked) { m_fields[AfterTouchValue]->setVisible(checked && !m_knob); });
    connect(m_mode7Fh01h, &QCheckBox::clicked, this, &MidiMenu::checkMode7Fh_01h_slot);
    connect(m_mode3Fh41h, &QCheckBox::clicked, this, &MidiMenu::checkMode3fh_41h_slot);
    connect(m_modeAbsolute, &QCheckBox::clicked, this, &MidiMenu::checkMode0_127_slot);
    for (const NumberField *field : m_fields) {
        connect(field, &QLineEdit::textEdited, this, &MidiMenu::processSettings);
    }
}

void MidiMenu::show(int type, int id, const shortCut &buttonShortCut)
{
    open(false, type, id, buttonShortCut);
}

void MidiMenu::showKnob(int type, int id, const shortCut &buttonShortCut)
{
    open(true, type, id, buttonShortCut);
}

void MidiMenu::open(bool knob, int type, int id, const shortCut &record)
{
    m_knob = knob;
    m_type = type;
    m_id = id;
    qCDebug(lcUi) << "buttonShortCut:" << id << type << record.label << record.channel << record.cc
                  << record.v_on << record.v_off << record.note << record.v_off_enable << record.knobcc
                  << record.m01h << record.m3fh << record.m0_127;
    layOut();
    fill(isEmpty(record) ? withUsualValues(record, knob) : record);
    QWidget::show();
    m_fields[Channel]->setFocus();
    m_fields[Channel]->selectAll();
}

void MidiMenu::layOut()
{
    const QString title = m_knob ? tr("MIDI FOR KNOB") : tr("MIDI");
    m_title->setGeometry(m_knob ? QRect(100, 8, 120, 16) : QRect(140, 8, 90, 16));
    FittingText::show(m_title, title);
    setWindowTitle(title);
    setAccessibleName(title);

    const struct {
        QWidget *widget;
        QPoint button;
        QPoint knob;
    } places[] = {
        {m_ccOnTouch, {45, 82}, {45, 162}},
        {m_noteOnTouch, {45, 102}, {45, 182}},
        {m_touchLabel, {45, 130}, {45, 210}},
        {m_afterTouch, {45, 170}, {45, 250}},
        {m_fields[TouchNumber], {160, 90}, {160, 170}},
        {m_fields[TouchValue], {160, 130}, {160, 210}},
        {m_fields[AfterTouchValue], {160, 170}, {160, 250}},
        {m_ok, {205, 250}, {205, 300}},
    };
    for (const auto &place : places) {
        place.widget->move(m_knob ? place.knob : place.button);
    }
    for (QWidget *widget : {static_cast<QWidget *>(m_knobLabel), static_cast<QWidget *>(m_fields[KnobCC]),
                            static_cast<QWidget *>(m_mode7Fh01h), static_cast<QWidget *>(m_mode3Fh41h),
                            static_cast<QWidget *>(m_modeAbsolute)}) {
        widget->setVisible(m_knob);
    }
    for (const FieldIndex index : {TouchNumber, TouchValue, AfterTouchValue}) {
        m_fields[index]->setVisible(!m_knob);
    }
    setPanelHeight(m_knob ? 330 : 280);
}

void MidiMenu::fill(const shortCut &record)
{
    const bool sendsOnTouch = !m_knob || record.cc != nothing;
    m_ccOnTouch->setChecked(sendsOnTouch && !record.note);
    m_noteOnTouch->setChecked(sendsOnTouch && record.note);
    m_touchNumber = record.cc;
    m_afterTouch->setChecked(record.v_off_enable);
    m_fields[AfterTouchValue]->setVisible(!m_knob && record.v_off_enable);

    const int values[FieldCount] = {record.channel, record.knobcc, record.cc, record.v_on, record.v_off};
    for (std::size_t i = 0; i < FieldCount; ++i) {
        m_fields[i]->setValue(values[i]);
    }
    m_mode7Fh01h->setChecked(record.m01h);
    m_mode3Fh41h->setChecked(record.m3fh);
    m_modeAbsolute->setChecked(record.m0_127);
}

void MidiMenu::processSettings()
{
    bool allValid = true;
    for (NumberField *field : m_fields) {
        allValid = field->takeOver() && allValid;
    }
    if (!allValid) {
        return;
    }
    const bool note = m_noteOnTouch->isChecked();
    const bool release = m_afterTouch->isChecked();
    const auto value = [this](FieldIndex index) { return m_fields[index]->value(); };
    if (m_knob) {
        Q_EMIT newMidiKnob(m_type, value(Channel), value(TouchNumber), value(TouchValue),
                           value(AfterTouchValue), note, release, value(KnobCC), m_mode7Fh01h->isChecked(),
                           m_mode3Fh41h->isChecked(), m_modeAbsolute->isChecked());
    } else {
        Q_EMIT newMidi(m_type, value(Channel), value(TouchNumber), value(TouchValue), value(AfterTouchValue),
                       note, release);
    }
}

void MidiMenu::bn_ok_slot()
{
    m_ok->setStyleSheet(pictureSheet(QStringLiteral("ok"), true));
    processSettings();
    hide();
}

void MidiMenu::bn_cancel_slot()
{
    hide();
}

// The number stays what it is: a controller's and a note's have the same range.
void MidiMenu::checkCC_slot(bool checked)
{
    if (checked) {
        m_noteOnTouch->setChecked(false);
    }
    setTouchSends(checked, usualTouchController);
    processSettings();
}

void MidiMenu::checkNote_slot(bool checked)
{
    if (checked) {
        m_ccOnTouch->setChecked(false);
    }
    setTouchSends(checked, usualTouchNote);
    processSettings();
}

// Only the knob's touch can be without a message: a button has no other.
void MidiMenu::setTouchSends(bool on, int usualNumber)
{
    if (!m_knob) {
        return;
    }
    NumberField *field = m_fields[TouchNumber];
    if (!on) {
        m_touchNumber = field->value();
        field->setValue(nothing);
    } else if (field->value() == nothing) {
        field->setValue(m_touchNumber == nothing ? usualNumber : m_touchNumber);
    }
}

void MidiMenu::checkMode7Fh_01h_slot(bool checked)
{
    keepOneMode(checked ? m_mode7Fh01h : nullptr);
}

void MidiMenu::checkMode3fh_41h_slot(bool checked)
{
    keepOneMode(checked ? m_mode3Fh41h : nullptr);
}

void MidiMenu::checkMode0_127_slot(bool checked)
{
    keepOneMode(checked ? m_modeAbsolute : nullptr);
}

// None at all is allowed.
void MidiMenu::keepOneMode(QCheckBox *checked)
{
    for (QCheckBox *mode : {m_mode7Fh01h, m_mode3Fh41h, m_modeAbsolute}) {
        mode->setChecked(checked && mode == checked);
    }
    processSettings();
}

void MidiMenu::hideEvent(QHideEvent *event)
{
    m_ok->setStyleSheet(pictureSheet(QStringLiteral("ok"), false));
    OverlayDialog::hideEvent(event);
}

void MidiMenu::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        bn_cancel_slot();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        bn_ok_slot();
        break;
    default:
        OverlayDialog::keyPressEvent(event);
    }
}
