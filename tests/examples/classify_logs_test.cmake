# Volumes by pi/4 * d^2 * l, rounded to three decimals; classes by the diameter in full centimetres.
include(${CMAKE_CURRENT_LIST_DIR}/check.cmake)
make_database(5)

run(${PYTHON} ${EXAMPLES}/classify_logs.py ${TAMAROK} ${database} ${EXAMPLES}/logs.csv)
expect("species;assortment;d;l;pieces;class;volume
FI;BL;32,5;4,1;1;3a;0,340
FI;BL;41;5;1;4;0,660
TA;BL;55,5;4,1;2;5;1,984
KI;ZH;14;4;10;1a;0,620
BU;FU;61;2,8;1;6;0,818
")
