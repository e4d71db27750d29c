// Identifiers of the value editors' resources. OK and Cancel are IDOK and IDCANCEL.
#pragma once

#define IDD_CPMODIF1 130
#define IDD_CPMODIF2 131
#define IDD_CPMODIF3 132
#define IDD_CPMODIF4 133

#define IDC_LBLNAME 1100
#define IDC_TXTNEWCPVALUE 1101
#define IDC_LBLUNITS 1102
#define IDC_LABEL5 1103
#define IDC_LBLMIN 1104
#define IDC_LABEL2 1105
#define IDC_LBLMAX 1106
#define IDC_CHKINVALID 1107
#define IDC_CBOENUM 1108
#define IDC_LVWMAIN 1109
