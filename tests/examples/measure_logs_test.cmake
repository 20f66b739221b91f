# Volumes by pi/4 * d^2 * l, rounded to three decimals for one piece and then multiplied.
include(${CMAKE_CURRENT_LIST_DIR}/check.cmake)

run(sh ${EXAMPLES}/measure_logs.sh ${TAMAROK} ${EXAMPLES}/logs.csv)
expect("species;assortment;d;l;pieces;volume
FI;BL;32,5;4,1;1;0.340
FI;BL;41;5;1;0.660
TA;BL;55,5;4,1;2;1.984
KI;ZH;14;4;10;0.620
BU;FU;61;2,8;1;0.818
total volume: 4.422 m³
")
