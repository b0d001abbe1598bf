insert into utilisateur (login, mot_pase, nom, role) values ('10', '1', 'Amrani', 'Admin');
insert into caisse (ID_caise, nom_caisse, solde, general, "select") values ('C001', 'Salle', 5000, 'NON', 'OUI'), ('C002', 'Terrasse', 800, 'NON', 'OUI');
insert into acce_caisse (id_caisse, login, general) values ('C001', '10', 'NON');
insert into TVA (tva, utilisation) values (19, 'OUI');
insert into Fournisseur (code_fournisseur, nom_fournisseur, n_telephone) values ('F1', 'Boissons du Sahel', '025'), ('F2', 'Minoterie', null);
insert into article (code_barre, designation_article, qte_stock, prix_achat, prix_vente, desto) values
  ('1', 'EAU', 10, 20, 40, 'OUI'), ('2', 'PAIN', 0, 8, 15, 'NON'), ('3', 'SODA', 5, 45, 90, 'OUI');
