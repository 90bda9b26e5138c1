#pragma once
// The control identifiers of the settings dialog (settings.rc). Each hotkey row's controls are
// a block of ten identifiers: the row of hotkey N is the block's first + N - 1.

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
#define IDC_LABEL1 300     /* the hotkeys' labels, from the hotkey table */
#define IDC_HOTKEY1 310    /* the typed combination */
#define IDC_STATUS1 320    /* what is wrong with it */
#define IDC_KEYLIST1 330   /* its key, picked from a list */
#define IDC_CTRL1 340      /* its modifiers */
#define IDC_ALT1 350
#define IDC_SHIFT1 360
#define IDC_WIN1 370
