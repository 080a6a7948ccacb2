MT3DSUP
SPC Nitrate
SPC Tracer
REFTIME 2023 12 1 0 0 0
UNITS d m g
BTN valley.btn
SSM valley.ssm
CON valley001.ucn
CON valley002.ucn
END
