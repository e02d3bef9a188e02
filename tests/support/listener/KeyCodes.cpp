#include "tests/support/listener/KeyCodes.h"

#define XK_MISCELLANY
#define XK_XKB_KEYS
#define XK_LATIN1
#include <X11/XF86keysym.h>
#include <X11/keysymdef.h>

namespace listener
{

namespace
{

struct Entry {
    KeySym keysym;
    int code;
};

constexpr Entry entries[] = {
    {XK_Cancel, 0x03},
    {XK_BackSpace, 0x08},
    {XK_Tab, 0x09},
    {XK_ISO_Left_Tab, 0x09},
    {XK_Clear, 0x0c},
    {XK_KP_Begin, 0x0c},
    {XK_Return, 0x0d},
    {XK_KP_Enter, 0x0d},
    {XK_Shift_L, 0x10},
    {XK_Shift_R, 0x10},
    {XK_Control_L, 0x11},
    {XK_Control_R, 0x11},
    {XK_Alt_L, 0x12},
    {XK_Meta_L, 0x12},
    {XK_Alt_R, 0x12},
    {XK_ISO_Level3_Shift, 0x12},
    {XK_Pause, 0x13},
    {XK_Caps_Lock, 0x14},
    {XK_Escape, 0x1b},
    {XK_space, 0x20},
    {XK_Page_Up, 0x21},
    {XK_KP_Page_Up, 0x21},
    {XK_Page_Down, 0x22},
    {XK_KP_Page_Down, 0x22},
    {XK_End, 0x23},
    {XK_KP_End, 0x23},
    {XK_Home, 0x24},
    {XK_KP_Home, 0x24},
    {XK_Left, 0x25},
    {XK_KP_Left, 0x25},
    {XK_Up, 0x26},
    {XK_KP_Up, 0x26},
    {XK_Right, 0x27},
    {XK_KP_Right, 0x27},
    {XK_Down, 0x28},
    {XK_KP_Down, 0x28},
    {XK_Select, 0x29},
    {XK_Execute, 0x2b},
    {XK_Print, 0x2c},
    {XK_Sys_Req, 0x2c},
    {XK_Insert, 0x2d},
    {XK_KP_Insert, 0x2d},
    {XK_Delete, 0x2e},
    {XK_KP_Delete, 0x2e},
    {XK_Help, 0x2f},
    {XK_Super_L, 0x5b},
    {XK_Super_R, 0x5c},
    {XK_Menu, 0x5d},
    {XF86XK_Sleep, 0x5f},
    {XK_KP_Multiply, 0x6a},
    {XK_KP_Add, 0x6b},
    {XK_KP_Separator, 0x6c},
    {XK_KP_Subtract, 0x6d},
    {XK_KP_Decimal, 0x6e},
    {XK_KP_Divide, 0x6f},
    {XK_Num_Lock, 0x90},
    {XK_Scroll_Lock, 0x91},
    {XF86XK_Back, 0xa6},
    {XF86XK_Forward, 0xa7},
    {XF86XK_Refresh, 0xa8},
    {XF86XK_Stop, 0xa9},
    {XF86XK_Search, 0xaa},
    {XF86XK_Favorites, 0xab},
    {XF86XK_HomePage, 0xac},
    {XF86XK_AudioMute, 0xad},
    {XF86XK_AudioLowerVolume, 0xae},
    {XF86XK_AudioRaiseVolume, 0xaf},
    {XF86XK_AudioNext, 0xb0},
    {XF86XK_AudioPrev, 0xb1},
    {XF86XK_AudioStop, 0xb2},
    {XF86XK_AudioPlay, 0xb3},
    {XF86XK_Mail, 0xb4},
    {XF86XK_AudioMedia, 0xb5},
    {XK_semicolon, 0xba},
    {XK_equal, 0xbb},
    {XK_plus, 0xbb},
    {XK_comma, 0xbc},
    {XK_minus, 0xbd},
    {XK_period, 0xbe},
    {XK_slash, 0xbf},
    {XK_grave, 0xc0},
    {XK_bracketleft, 0xdb},
    {XK_backslash, 0xdc},
    {XK_bracketright, 0xdd},
    {XK_apostrophe, 0xde},
    {XK_less, 0xe2},
};

} // namespace

int virtualKeyOf(KeySym keysym)
{
    if (keysym >= XK_a && keysym <= XK_z) {
        return static_cast<int>('A' + (keysym - XK_a));
    }
    if ((keysym >= XK_A && keysym <= XK_Z) || (keysym >= XK_0 && keysym <= XK_9)) {
        return static_cast<int>(keysym);
    }
    if (keysym >= XK_KP_0 && keysym <= XK_KP_9) {
        return static_cast<int>(0x60 + (keysym - XK_KP_0));
    }
    if (keysym >= XK_F1 && keysym <= XK_F24) {
        return static_cast<int>(0x70 + (keysym - XK_F1));
    }
    for (const Entry &entry : entries) {
        if (entry.keysym == keysym) {
            return entry.code;
        }
    }
    return 0;
}

} // namespace listener
