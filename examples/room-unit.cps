[GEN_INFO]
ProgramId=9FFFFF0512040410

[NCIs]
TotalNumber=14

[NCI_0]
Index=42
Value=Floor_1_Room_101
Name=nciLocation
Mark=1

[NCI_1]
Index=43
Value=23.00 25.00 28.00 21.00 19.00 16.00
Name=nciSetpoints
Mark=1

[NCI_2]
Index=44
Value=60.0
Name=nciSndHrtBt
Mark=1

[NCI_3]
Index=45
Value=300.0
Name=nciRcvHrtBt
Mark=1

[NCI_4]
Index=46
Value=5.0
Name=nciMinOutTm
Mark=1

[NCI_5]
Index=47
Value=0.20
Name=nciMinDelta
Mark=1

[NCI_6]
Index=48
Value=0
Name=nciApplicMode
Mark=1

[NCI_7]
Index=49
Value=00142D50647D96FF
Name=nciFanCurve
Mark=1

[NCI_8]
Index=50
Value=-0.35
Name=nciTempOffset
Mark=1

[NCI_9]
Index=51
Value=0
Name=nciNetConfig
Mark=1

[NCI_10]
Index=52
Value=80.0
Name=nciFanMax
Mark=1

[NCI_11]
Index=53
Value=1.2500
Name=nciProportGain
Mark=1

[NCI_12]
Index=54
Value=2000
Name=nciFilterHours
Mark=1

[NCI_13]
Index=55
Value=0.985
Name=nciFlowFactor
Mark=1

[CPs]
TotalNumber=43

[CP_0]
Address=0
Value=FCU_101
Name=cpUnitName
Mark=1

[CP_1]
Address=1
Value=101
Name=cpApplCode
Mark=1

[CP_2]
Address=2
Value=4
Name=cpHeatType
Mark=1

[CP_3]
Address=3
Value=0
Name=cpCoolType
Mark=1

[CP_4]
Address=4
Value=3
Name=cpFanStages
Mark=1

[CP_5]
Address=5
Value=30.0
Name=cpFanLow
Mark=1

[CP_6]
Address=6
Value=55.5
Name=cpFanMedium
Mark=1

[CP_7]
Address=7
Value=85.0
Name=cpFanHigh
Mark=1

[CP_8]
Address=8
Value=120.0
Name=cpFanOverrun
Mark=1

[CP_9]
Address=9
Value=2.00
Name=cpHeatGain
Mark=1

[CP_10]
Address=10
Value=30
Name=cpHeatIntegral
Mark=1

[CP_11]
Address=11
Value=2.50
Name=cpCoolGain
Mark=1

[CP_12]
Address=12
Value=25
Name=cpCoolIntegral
Mark=1

[CP_13]
Address=13
Value=1.50
Name=cpDeadBand
Mark=1

[CP_14]
Address=14
Value=16.00
Name=cpSetptMin
Mark=1

[CP_15]
Address=15
Value=28.00
Name=cpSetptMax
Mark=1

[CP_16]
Address=16
Value=3.00
Name=cpOffsetRange
Mark=1

[CP_17]
Address=17
Value=120
Name=cpBypassTime
Mark=1

[CP_18]
Address=18
Value=90.0
Name=cpHoldOffDelay
Mark=1

[CP_19]
Address=19
Value=6
Name=cpHoldOffMode
Mark=1

[CP_20]
Address=20
Value=8.00
Name=cpFrostLimit
Mark=1

[CP_21]
Address=21
Value=45.00
Name=cpOverheat
Mark=1

[CP_22]
Address=22
Value=180.5
Name=cpValveTime
Mark=1

[CP_23]
Address=23
Value=0.000
Name=cpValveMin
Mark=1

[CP_24]
Address=24
Value=100.000
Name=cpValveMax
Mark=1

[CP_25]
Address=25
Value=240.0
Name=cpPwmPeriod
Mark=1

[CP_26]
Address=26
Value=900
Name=cpCO2Limit
Mark=1

[CP_27]
Address=27
Value=65.000
Name=cpRHLimit
Mark=1

[CP_28]
Address=28
Value=1 1 0 0 0 0 0 0 0 0 0 0 0 0 0 0
Name=cpInputKinds
Mark=1

[CP_29]
Address=29
Value=1 1 1 0 0 0 0 0 0 0 0 0 0 0 0 0
Name=cpOutputKinds
Mark=1

[CP_30]
Address=30
Value=0 0 10 0 0
Name=cpAlarmDelay
Mark=1

[CP_31]
Address=31
Value=620.00
Name=cpFilterFlow
Mark=1

[CP_32]
Address=32
Value=48.5
Name=cpMotorPower
Mark=1

[CP_33]
Address=33
Value=-12.5
Name=cpEnergyBase
Mark=1

[CP_34]
Address=34
Value=1.0025
Name=cpSensorScale
Mark=1

[CP_35]
Address=35
Value=21.4
Name=cpSensorRef
Mark=1

[CP_36]
Address=36
Value=4
Name=cpEmergAction
Mark=1

[CP_37]
Address=37
Value=0011223344556677
Name=cpUserTable
Mark=1

[CP_38]
Address=38
Value=+39_02_5550101
Name=cpServicePhone
Mark=1

[CP_39]
Address=39
Value=0 4
Name=cpStartScene
Mark=1

[CP_40]
Address=40
Value=45.00
Name=cpSlatAngle
Mark=1

[CP_41]
Address=41
Value=0 12 00000000 0 7 30 0 0
Name=cpPreset
Mark=1

[CP_42]
Address=42
Value=2023 11 6 14 5 30
Name=cpCommissioned
Mark=1
