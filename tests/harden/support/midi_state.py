"""What messages leave on in an instrument."""

KNOB_CONTROLLER = "64"  # 100: turned to a value that is meant to stay


def still_on(messages):
    """Notes and controllers that the messages left on."""
    values = {}
    for message in messages:
        _, status, number, value = message.split()
        if status[0] == "B" and number == KNOB_CONTROLLER:
            continue
        is_note = status[0] in "89"
        values["note" if is_note else "controller", status[1], number] = value if status[0] in "9B" else "00"
    return [name for name, value in values.items() if value != "00"]
