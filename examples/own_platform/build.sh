# Builds the host with its own platform library, an installed zan, and pkg-config: sh -e build.sh
#! [build]
g++ -std=c++17 -fPIC -shared host_platform.cpp $(pkg-config --cflags zan-platform) -o libhost_platform.so
g++ -std=c++17 host.cpp $(pkg-config --cflags --libs zan) -L. -lhost_platform -Wl,-rpath,'$ORIGIN' -o host
#! [build]
