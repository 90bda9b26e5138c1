#pragma once
// The control identifiers of the settings dialog (settings.rc).

#define IDD_SETTINGS 100
#define IDC_LABEL1 102    /* to IDC_LABEL1 + 5: the hotkeys' labels, from the hotkey table */
#define IDC_HOTKEY1 110   /* to IDC_HOTKEY1 + 5 */
#define IDC_STATUS1 120   /* to IDC_STATUS1 + 5 */
#define IDC_NAME1 130     /* to IDC_NAME1 + 3 */
#define IDC_START2 141    /* to IDC_START2 + 2, desktops 2 to 4 */
#define IDC_PROGRAMS2 151 /* to IDC_PROGRAMS2 + 2 */
#define IDC_AUTOSTART 160
#define IDC_BANNER 161
#define IDC_RESULT 162
#define IDC_APPLY 163
#define IDC_LAPTOP 164   /* the number row's hotkeys, for a keyboard without a keypad */
#define IDC_STARTZK 165  /* shown while Zelkova2 does not run */
#define IDC_KEYLIST1 170 /* to IDC_KEYLIST1 + 5: each hotkey's key, picked from a list */
#define IDC_CTRL1 180    /* to IDC_CTRL1 + 5, and so on: its modifiers */
#define IDC_ALT1 190
#define IDC_SHIFT1 200
#define IDC_WIN1 210
