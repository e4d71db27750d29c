// Identifiers of the parameter dialog's resources.
#pragma once

#define IDD_CPDOWNLOAD 150
#define IDC_LSTCP_CHOICE 1280
#define IDC_LSTCP_HIDDEN 1281
