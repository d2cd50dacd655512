#pragma once

// All resource numbers in one place; included by the program and by quillet.rc.

// Frame, template text, toolbar, accelerators and icon share this number.
#define IDR_MAINFRAME 128

// Commands
#define ID_NEW 32771
#define ID_OPEN 32772
#define ID_SAVE 32773
#define ID_DELETE 32774
#define ID_DELETE_ALL 32775
#define ID_REFRESH 32783
#define ID_APP_ABOUT 57664
#define ID_MOVE_SPLITTER 33000

// Windows of the frame
#define ID_STATUS_BAR 59393
#define ID_TOOL_BAR 59392
#define ID_CLIENT 59648

// Toolbar images
#define IDB_TOOLBAR_HOT 161
#define IDB_TOOLBAR_NORMAL 162
#define IDB_TOOLBAR_DISABLED 163

// Dialogs
#define IDD_ABOUT 100
#define IDC_ABOUT_TITLE 1100
#define IDC_ABOUT_TEXT 1101
#define IDD_SAVE_QUESTION 212
#define IDC_SAVE_QUESTION 1030
#define IDD_DELETE_CONFIRM 213
#define IDC_DELETE_QUESTION 1031

// Texts of tree, list and dialogs
#define IDS_MOBILE 61452
#define IDS_MOBILE_INBOX 61453
#define IDS_MOBILE_OUTBOX 61454
#define IDS_PC 61455
#define IDS_PC_INBOX 61456
#define IDS_PC_SENT 61457
#define IDS_PC_DRAFT 61458
#define IDS_RECEIVER 61459
#define IDS_CANCEL 61462
#define IDS_TIME 61464
#define IDS_CONTENT 61465
#define IDS_OK 61466
#define IDS_TITLE 61481
#define IDS_DELETE_ALL_QUESTION 61482
#define IDS_SAVE_QUESTION 61483
#define IDS_NO_LIBRARY 61484
#define IDS_NO_CONNECTION 61485
#define IDS_DELETE_QUESTION 61491
#define IDS_SENDER 61492

// Status bar and file problems
#define IDS_READY 62000
#define IDS_READING 62001
#define IDS_READ_COUNTS 62002
#define IDS_CANNOT_READ 62003
#define IDS_PARTLY_READ 62004
#define IDS_ABOUT_MENU 62005
#define IDS_ABOUT_VERSION 62006
#define IDS_ABOUT_TEXT 62007
#define IDS_CAPS_LOCK 62010
#define IDS_NUM_LOCK 62011
#define IDS_SCROLL_LOCK 62012
