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
