import vek

vek.start()  # the product of KLV_PRODUCT_NAME
print(vek.find("<shared>/dampers.tbl/road_front.dpr"))
