#pragma once
// The control identifiers of the settings dialog (settings.rc).

#define IDD_SETTINGS 100
#define IDC_NAME1 130     /* to IDC_NAME1 + 3 */
#define IDC_START2 141    /* to IDC_START2 + 2, desktops 2 to 4 */
#define IDC_PROGRAMS2 151 /* to IDC_PROGRAMS2 + 2 */
#define IDC_AUTOSTART 160
#define IDC_BANNER 161
#define IDC_RESULT 162
#define IDC_APPLY 163
#define IDC_LAPTOP 164  /* the number row's hotkeys for a keyboard without a keypad, or back */
#define IDC_STARTZK 165 /* shown while Zelkova2 does not run */
#define IDC_NEWS 166
#define IDC_TABS 167 /* the pages: hotkeys, desktops, general */
#define IDC_PROGRAMSNOTE 168
#define IDC_DESK1NOTE 169
#define IDC_NAMELABEL1 170 /* to IDC_NAMELABEL1 + 3 */
#define IDC_HOTKEYS 300    /* the list of hotkeys: action, keys, what is wrong */
#define IDC_HOTKEYSLABEL 301
#define IDC_KEYLABEL 302
#define IDC_KEYLIST 303 /* the chosen hotkey's key */
#define IDC_CTRL 304    /* its modifiers */
#define IDC_ALT 305
#define IDC_SHIFT 306
#define IDC_WIN 307
#define IDC_STATUS 308 /* what is wrong with it */
